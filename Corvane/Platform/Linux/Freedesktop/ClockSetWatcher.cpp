// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/ClockSetWatcher.h"

#include <QSocketNotifier>

#include <chrono>
#include <utility>

namespace corvane {

ClockSetWatcher::ClockSetWatcher(std::unique_ptr<WallClockAlarm> alarm, QObject *parent)
    : QObject(parent)
    , m_alarm(std::move(alarm))
    , m_offset(m_alarm->offset())
{
    if (m_alarm->descriptor() < 0 || !m_alarm->arm()) {
        return;
    }
    auto *notifier = new QSocketNotifier(m_alarm->descriptor(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &ClockSetWatcher::handleAlarm);
}

ClockSetWatcher::~ClockSetWatcher()
{
    // The notifier must go before the descriptor that it watches.
    delete findChild<QSocketNotifier *>();
}

void ClockSetWatcher::handleAlarm()
{
    // Armed before the clocks are read, so that a change in between triggers the alarm again.
    if (!m_alarm->arm()) {
        delete findChild<QSocketNotifier *>();
        return;
    }
    // A sleep triggers the alarm, too, but leaves the offset as it is, because both clocks count it.
    const Seconds offset = m_alarm->offset();
    if (std::chrono::abs(offset - m_offset) > leastChange) {
        m_offset = offset;
        Q_EMIT clockWasSet();
    }
}

} // namespace corvane
