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

    /// Time passes, one second, and the alarm rings if it is its second.
    void tick()
    {
        ++m_now;
        if (m_alarm && *m_alarm <= m_now) {
            m_alarm.reset();
            Q_EMIT woke();
        }
    }

    /// Somebody sets the clock, or the machine wakes up from a sleep: whoever has set an alarm hears of it.
    void set(qint64 now)
    {
        m_now = now;
        if (m_alarm) {
            m_alarm.reset();
            Q_EMIT woke();
        }
    }

    bool isHurried = false; ///< each look at the clock takes a second

private:
    mutable qint64 m_now;
    std::optional<qint64> m_alarm;
};

} // namespace corvane
