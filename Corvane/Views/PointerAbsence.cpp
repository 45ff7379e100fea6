// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/PointerAbsence.h"

#include "Corvane/Utilities/Spawn.h"

#include <QEvent>

namespace corvane {

PointerAbsence::PointerAbsence(QWindow *window) : QObject(window), m_begin(uptime())
{
    window->installEventFilter(this);
    beginAnew();
}

void PointerAbsence::beginAnew()
{
    m_begin = uptime();
    if (m_isAway && !m_isCounting) {
        m_isCounting = true;
        spawn(count(this));
    }
}

bool PointerAbsence::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
        m_isAway = false;
        break;
    case QEvent::Leave:
        m_isAway = true;
        beginAnew();
        break;
    case QEvent::KeyPress:
        beginAnew();
        break;
    default:
        break;
    }
    return false;
}

QCoro::Task<void> PointerAbsence::count(QPointer<PointerAbsence> absence)
{
    while (absence && absence->m_isAway) {
        const Seconds left = absence->m_begin + limit - uptime();
        if (left <= Seconds{0}) {
            absence->m_isCounting = false;
            Q_EMIT absence->lasted();
            co_return;
        }
        co_await wait(left);
    }
    if (absence) {
        absence->m_isCounting = false;
    }
}

} // namespace corvane
