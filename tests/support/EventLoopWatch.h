// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace corvane {

/// Measures how long the event loop of the main thread was kept from its turns.
class EventLoopWatch {
public:
    /// Seconds that a busy machine does not explain: something has waited there. As long as the time between
    /// two updates of the bell, the next of which would be missed.
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

    /// The longest time between two turns since the construction, in seconds.
    [[nodiscard]] double longestGap()
    {
        note();
        return m_longest;
    }

    /// How often the loop has turned since, at most once in 10 ms: none while something holds it up, however
    /// fast or busy the machine is.
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
