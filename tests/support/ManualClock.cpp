// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/ManualClock.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace corvane {

struct ManualClock::Sleep {
    ManualClock &clock;
    Seconds duration;

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle)
    {
        clock.m_waits.push({clock.m_uptime + duration, clock.m_order++, handle});
    }
    void await_resume() const noexcept {}
};

ManualClock::ManualClock(Date now) : m_now(now)
{
    replaceClock(this);
}

ManualClock::~ManualClock()
{
    replaceClock(nullptr);
    // Pending waits never end. Destroying a coroutine frame would leave its awaiter dangling, so the frames
    // are kept, reachable for the leak checker.
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): without memory for a pointer the program ends.
    static auto &abandoned = *new std::vector<std::coroutine_handle<>>;
    while (!m_waits.empty()) {
        abandoned.push_back(m_waits.top().handle);
        m_waits.pop();
    }
}

QCoro::Task<void> ManualClock::wait(Seconds duration)
{
    const double seconds = std::isnan(duration.count()) ? 0.0 : std::max(duration.count(), 0.0);
    co_await Sleep{*this, Seconds{seconds}};
}

void ManualClock::advance(Seconds duration)
{
    const Seconds end = m_uptime + duration;
    while (!m_waits.empty() && m_waits.top().due <= end) {
        const Wait next = m_waits.top();
        m_waits.pop();
        m_now += std::max(next.due - m_uptime, Seconds::zero());
        m_uptime = std::max(next.due, m_uptime);
        next.handle.resume();
    }
    m_now += end - m_uptime;
    m_uptime = end;
}

void ManualClock::advanceTo(Date date)
{
    advance(date - m_now);
}

} // namespace corvane
