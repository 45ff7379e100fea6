// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// Where on the screen a banner appears.
enum class NotificationPosition { center, top, bottom, topLeft, topRight, bottomLeft, bottomRight };

/// All positions in the order of the settings window.
inline constexpr std::array allNotificationPositions{
    NotificationPosition::center,     NotificationPosition::top,      NotificationPosition::bottom,
    NotificationPosition::topLeft,    NotificationPosition::topRight, NotificationPosition::bottomLeft,
    NotificationPosition::bottomRight};

/// The stored form, which is also the position's identity: "topLeft".
[[nodiscard]] QString rawValue(NotificationPosition position);

/// The position with exactly this stored form, or none.
[[nodiscard]] std::optional<NotificationPosition> notificationPosition(const QString &rawValue);

/// The label shown to the teacher: "Top Left".
[[nodiscard]] QString title(NotificationPosition position);

} // namespace corvane
