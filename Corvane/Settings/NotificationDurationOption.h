// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// The banner durations that the settings window offers. Any other stored duration is used unchanged.
enum class NotificationDurationOption { fiveSeconds, tenSeconds };

/// All options in the order of the settings window.
inline constexpr std::array allNotificationDurationOptions{NotificationDurationOption::fiveSeconds,
                                                           NotificationDurationOption::tenSeconds};

/// The option's duration in seconds, which is also its identity.
[[nodiscard]] double rawValue(NotificationDurationOption option);

/// The option of exactly 5.0 or 10.0 seconds; none for any other duration.
[[nodiscard]] std::optional<NotificationDurationOption> notificationDurationOption(double rawValue);

/// The label shown to the teacher: "5 seconds".
[[nodiscard]] QString title(NotificationDurationOption option);

/// The option shown for a stored duration of `seconds`: the nearer one; the shorter one if both are equally
/// near or `seconds` is NaN.
[[nodiscard]] NotificationDurationOption nearestNotificationDurationOption(double seconds);

} // namespace corvane
