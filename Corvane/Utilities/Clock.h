// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <chrono>

namespace corvane {

/// A duration in seconds.
using Seconds = std::chrono::duration<double>;

/// A point in time, in seconds since 1970-01-01 00:00:00 UTC, without a time zone.
using Date = std::chrono::time_point<std::chrono::system_clock, Seconds>;

/// The Date `seconds` after 1970-01-01 00:00:00 UTC.
[[nodiscard]] constexpr Date dateSince1970(double seconds)
{
    return Date{Seconds{seconds}};
}

/// Seconds between 1970-01-01 00:00:00 UTC and `date`; negative before it.
[[nodiscard]] constexpr double secondsSince1970(Date date)
{
    return date.time_since_epoch().count();
}

/// The source of time behind currentDate(), uptime() and wait(). Main thread only.
class Clock {
public:
    virtual ~Clock() = default;

    /// The machine's wall clock, which may be set forward or back.
    [[nodiscard]] virtual Date now() const = 0;

    /// Time since an arbitrary moment; monotonic, whatever happens to the wall clock.
    [[nodiscard]] virtual Seconds uptime() const = 0;

    /// Completes once `duration` has passed, never earlier. Zero, negative and NaN durations complete on the
    /// next turn of the event loop. The waiting object may be gone by then.
    virtual QCoro::Task<void> wait(Seconds duration) = 0;
};

/// The current time: the only place in the program that reads the wall clock.
[[nodiscard]] Date currentDate();

/// The current time of a monotonic clock, for intervals that a change of the wall clock must not affect.
[[nodiscard]] Seconds uptime();

/// Waits at least `duration`: the only place in the program that waits for time to pass. (Adapters implement
/// the timeouts of their services themselves, in real time.)
QCoro::Task<void> wait(Seconds duration);

/// Replaces the system's clock by `clock` (borrowed); nullptr restores it. For tests only: they step through
/// a day in milliseconds.
void replaceClock(Clock *clock);

} // namespace corvane
