// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/NotificationDurationOption.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane {

double rawValue(NotificationDurationOption option)
{
    switch (option) {
    case NotificationDurationOption::fiveSeconds:
        return 5.0;
    case NotificationDurationOption::tenSeconds:
        return 10.0;
    }
    Q_UNREACHABLE();
}

std::optional<NotificationDurationOption> notificationDurationOption(double rawValue)
{
    for (const NotificationDurationOption option : allNotificationDurationOptions) {
        if (corvane::rawValue(option) == rawValue) {
            return option;
        }
    }
    return std::nullopt;
}

QString title(NotificationDurationOption option)
{
    switch (option) {
    case NotificationDurationOption::fiveSeconds:
        return u"5 seconds"_s;
    case NotificationDurationOption::tenSeconds:
        return u"10 seconds"_s;
    }
    Q_UNREACHABLE();
}

NotificationDurationOption nearestNotificationDurationOption(double seconds)
{
    return std::abs(10.0 - seconds) < std::abs(5.0 - seconds) ? NotificationDurationOption::tenSeconds
                                                              : NotificationDurationOption::fiveSeconds;
}

} // namespace corvane
