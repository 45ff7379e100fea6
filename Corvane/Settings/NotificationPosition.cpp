// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/NotificationPosition.h"

using namespace Qt::StringLiterals;

namespace corvane {

QString rawValue(NotificationPosition position)
{
    switch (position) {
    case NotificationPosition::center:
        return u"center"_s;
    case NotificationPosition::top:
        return u"top"_s;
    case NotificationPosition::bottom:
        return u"bottom"_s;
    case NotificationPosition::topLeft:
        return u"topLeft"_s;
    case NotificationPosition::topRight:
        return u"topRight"_s;
    case NotificationPosition::bottomLeft:
        return u"bottomLeft"_s;
    case NotificationPosition::bottomRight:
        return u"bottomRight"_s;
    }
    Q_UNREACHABLE();
}

std::optional<NotificationPosition> notificationPosition(const QString &rawValue)
{
    for (const NotificationPosition position : allNotificationPositions) {
        if (corvane::rawValue(position) == rawValue) {
            return position;
        }
    }
    return std::nullopt;
}

QString title(NotificationPosition position)
{
    switch (position) {
    case NotificationPosition::center:
        return u"Center"_s;
    case NotificationPosition::top:
        return u"Top"_s;
    case NotificationPosition::bottom:
        return u"Bottom"_s;
    case NotificationPosition::topLeft:
        return u"Top Left"_s;
    case NotificationPosition::topRight:
        return u"Top Right"_s;
    case NotificationPosition::bottomLeft:
        return u"Bottom Left"_s;
    case NotificationPosition::bottomRight:
        return u"Bottom Right"_s;
    }
    Q_UNREACHABLE();
}

} // namespace corvane
