// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Preloaded before libfaketime by scripts/soak. libfaketime treats a timer set to the kernel's last second as
// long expired. Here no timer is set later than the year 2242.

#include <dlfcn.h>
#include <sys/timerfd.h>

#include <algorithm>

extern "C" __attribute__((visibility("default"))) int
timerfd_settime(int timer, int flags, const itimerspec *moment, itimerspec *earlier) noexcept
{
    using Function = int (*)(int, int, const itimerspec *, itimerspec *);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "timerfd_settime"));
    itimerspec nearer = *moment;
    nearer.it_value.tv_sec = std::min(nearer.it_value.tv_sec, time_t{1} << 33);
    return next(timer, flags, &nearer, earlier);
}
