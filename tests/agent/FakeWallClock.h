// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/WallClock.h"

namespace corvane {

/// A clock that stands still until the test moves it.
class FakeWallClock final : public WallClock {
    Q_OBJECT

public:
    explicit FakeWallClock(qint64 now) : m_now(now) {}

    [[nodiscard]] qint64 now() const override { return isHurried ? m_now++ : m_now; }
    void wakeAt(std::optional<qint64> second) override { m_alarm = second; }

    [[nodiscard]] std::optional<qint64> alarm() const { return m_alarm; }

    /// Advances by one second; rings if the alarm is due.
    void tick()
    {
        ++m_now;
        if (m_alarm && *m_alarm <= m_now) {
            m_alarm.reset();
            Q_EMIT woke();
        }
    }

    /// Sets the clock, as a user or a wake-up from sleep does. Like the real clock, it rings if an alarm is
    /// set.
    void set(qint64 now)
    {
        m_now = now;
        if (m_alarm) {
            m_alarm.reset();
            Q_EMIT woke();
        }
    }

    bool isHurried = false; ///< each call of now() advances the clock by a second

private:
    mutable qint64 m_now;
    std::optional<qint64> m_alarm;
};

} // namespace corvane
