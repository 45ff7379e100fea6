// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/QuietNotice.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane {

NotificationRequest quietNotice(const QString &kind, const QString &categoryIdentifier, const QString &title,
                                const QString &body, Date now)
{
    const double second = std::floor(secondsSince1970(now)) + 2;
    constexpr Seconds use{900};
    return {.identifier = kind + u'.' + QString::number(static_cast<qint64>(second)),
            .title = title,
            .body = body,
            .categoryIdentifier = categoryIdentifier,
            .fireDate = dateSince1970(second),
            .expirationDate = dateSince1970(second) + use,
            .isQuiet = true};
}

} // namespace corvane
