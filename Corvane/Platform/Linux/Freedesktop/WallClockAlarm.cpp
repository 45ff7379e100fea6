// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/WallClockAlarm.h"

#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>

namespace corvane {

namespace {

Seconds reading(clockid_t clock)
{
    timespec now{};
    ::clock_gettime(clock, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

} // namespace

KernelWallClockAlarm::KernelWallClockAlarm()
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
}

KernelWallClockAlarm::~KernelWallClockAlarm()
{
    if (m_timer >= 0) {
        ::close(m_timer);
    }
}

bool KernelWallClockAlarm::arm()
{
    // Acknowledges the alarm. Fails with ECANCELED if the clock was set, as expected.
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t length = ::read(m_timer, &count, sizeof count);
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<time_t>::max();
    // ECANCELED means that the clock was set after the read; the timer is armed nevertheless.
    return ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == 0 ||
           errno == ECANCELED;
}

Seconds KernelWallClockAlarm::offset() const
{
    // The clocks cannot be read at the same moment. Of several readings the fastest counts, because the
    // process may be interrupted within a reading.
    constexpr int readings = 5;
    Seconds best{};
    Seconds leastTime = Seconds::max();
    for (int i = 0; i < readings; ++i) {
        const Seconds before = reading(CLOCK_BOOTTIME);
        const Seconds wall = reading(CLOCK_REALTIME);
        const Seconds time = reading(CLOCK_BOOTTIME) - before;
        if (time < leastTime) {
            leastTime = time;
            best = wall - (before + time / 2);
        }
    }
    return best;
}

} // namespace corvane
