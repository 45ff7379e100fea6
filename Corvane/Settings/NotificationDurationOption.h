// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// The lengths of time on screen that the settings window offers. Any other stored length is used as it
/// stands.
enum class NotificationDurationOption { fiveSeconds, tenSeconds };

/// All options in the order in which the settings window lists them.
inline constexpr std::array allNotificationDurationOptions{NotificationDurationOption::fiveSeconds,
                                                           NotificationDurationOption::tenSeconds};

/// The option's length in seconds, which is also its identity.
[[nodiscard]] double rawValue(NotificationDurationOption option);

/// The option of exactly 5.0 or 10.0 seconds; none for any other length.
[[nodiscard]] std::optional<NotificationDurationOption> notificationDurationOption(double rawValue);

/// The label shown to the teacher: "5 seconds".
[[nodiscard]] QString title(NotificationDurationOption option);

/// The option that stands for a stored length of `seconds`: the nearer one, the shorter one when both are as
/// near or the length is not a number.
[[nodiscard]] NotificationDurationOption nearestNotificationDurationOption(double seconds);

} // namespace corvane
