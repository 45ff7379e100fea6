// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace corvane {

/// Measures how long the main thread's event loop is blocked.
class EventLoopWatch {
public:
    /// A gap in seconds that a busy machine does not explain: something blocked the loop. Equals the bell's
    /// update interval, so a longer gap would skip an update.
    static constexpr double blockedThreshold = 1;

    EventLoopWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            ++m_turns;
            note();
        });
        m_timer.start(interval);
    }

    /// The longest time between two turns since construction, in seconds.
    [[nodiscard]] double longestGap()
    {
        note();
        return m_longest;
    }

    /// Turns of the loop since construction, counted at most once per 10 ms. The count stands still while the
    /// loop is blocked, however fast or busy the machine is.
    [[nodiscard]] int turns() const { return m_turns; }

private:
    static constexpr std::chrono::milliseconds interval{10};

    void note()
    {
        const auto now = std::chrono::steady_clock::now();
        m_longest = std::max(m_longest, Seconds(now - m_last).count());
        m_last = now;
    }

    QTimer m_timer;
    std::chrono::steady_clock::time_point m_last = std::chrono::steady_clock::now();
    double m_longest = 0;
    int m_turns = 0;
};

} // namespace corvane
