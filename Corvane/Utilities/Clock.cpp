// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotimer.h>

#include <QTimer>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

class SystemClock final : public Clock {
public:
    [[nodiscard]] Date now() const override
    {
        return std::chrono::time_point_cast<Seconds>(std::chrono::system_clock::now());
    }

    [[nodiscard]] Seconds uptime() const override
    {
        return std::chrono::duration_cast<Seconds>(std::chrono::steady_clock::now().time_since_epoch());
    }

    QCoro::Task<void> wait(Seconds duration) override
    {
        // A timer counts milliseconds in an int, so a longer wait consists of several.
        constexpr double maximumTimerInterval = 1e6;
        const Seconds end = uptime() + (std::isnan(duration.count()) ? Seconds::zero() : duration);
        do {
            const double remaining = std::clamp((end - uptime()).count(), 0.0, maximumTimerInterval);
            QTimer timer;
            timer.setSingleShot(true);
            timer.setTimerType(Qt::PreciseTimer);
            timer.start(static_cast<int>(std::ceil(remaining * 1000.0)));
            co_await timer;
        } while (uptime() < end);
    }
};

SystemClock &systemClock()
{
    static SystemClock clock;
    return clock;
}

Clock *replacement = nullptr;

Clock &clock()
{
    return replacement != nullptr ? *replacement : systemClock();
}

} // namespace

Date currentDate()
{
    return clock().now();
}

Seconds uptime()
{
    return clock().uptime();
}

QCoro::Task<void> wait(Seconds duration)
{
    return clock().wait(duration);
}

void replaceClock(Clock *clock)
{
    replacement = clock;
}

} // namespace corvane
