// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <coroutine>
#include <cstdint>
#include <queue>

namespace corvane {

/// A clock that advances only when a test advances it. During its lifetime it replaces the system clock, so
/// that currentDate(), uptime() and wait() follow it.
class ManualClock final : public Clock {
public:
    explicit ManualClock(Date now);
    ~ManualClock() override;
    ManualClock(const ManualClock &) = delete;
    ManualClock &operator=(const ManualClock &) = delete;

    [[nodiscard]] Date now() const override { return m_now; }
    [[nodiscard]] Seconds uptime() const override { return m_uptime; }
    QCoro::Task<void> wait(Seconds duration) override;

    /// Advances wall clock and uptime by `duration`. Each wait that falls due ends at its own moment, in
    /// order.
    void advance(Seconds duration);

    /// Advances to `date`, like advance().
    void advanceTo(Date date);

    /// Sets the wall clock as a user would, forward or back; it neither ends nor shifts a wait.
    void setWallClock(Date date) { m_now = date; }

    /// The number of pending waits.
    [[nodiscard]] std::size_t waitCount() const { return m_waits.size(); }

private:
    struct Wait {
        Seconds due;
        std::uint64_t order;
        std::coroutine_handle<> handle;
        friend bool operator<(const Wait &left, const Wait &right)
        {
            return left.due != right.due ? left.due > right.due : left.order > right.order;
        }
    };
    struct Sleep;

    Date m_now;
    Seconds m_uptime{1000};
    std::uint64_t m_order = 0;
    std::priority_queue<Wait> m_waits;
};

} // namespace corvane
