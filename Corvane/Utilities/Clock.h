// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <chrono>

namespace corvane {

/// A length of time in seconds.
using Seconds = std::chrono::duration<double>;

/// An absolute point in time, counted in seconds since 1970-01-01 00:00:00 UTC. It carries no time zone.
using Date = std::chrono::time_point<std::chrono::system_clock, Seconds>;

/// Makes the Date that lies `seconds` after 1970-01-01 00:00:00 UTC.
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

    /// What the wall clock of the machine says; it may be set forward and back.
    [[nodiscard]] virtual Date now() const = 0;

    /// Time since an arbitrary moment; it never runs backwards, whatever is done to the wall clock.
    [[nodiscard]] virtual Seconds uptime() const = 0;

    /// Ends once `duration` has passed, never earlier. Zero, negative and NaN durations end on the next turn
    /// of the event loop. The object that waits may be gone by then.
    virtual QCoro::Task<void> wait(Seconds duration) = 0;
};

/// The present moment: the one place of the program where the wall clock is read.
[[nodiscard]] Date currentDate();

/// The present moment on a clock that is never set; for intervals that a change of the wall clock must not
/// touch.
[[nodiscard]] Seconds uptime();

/// Waits at least `duration`: the one place where the program waits for time to pass. (Adapters keep the time
/// limits of the services that they speak to by themselves, in real time.)
QCoro::Task<void> wait(Seconds duration);

/// Puts `clock` (borrowed) in the place of the system's clock; nullptr puts the system's clock back. Called
/// by tests only, which so step through a day in milliseconds.
void replaceClock(Clock *clock);

} // namespace corvane
