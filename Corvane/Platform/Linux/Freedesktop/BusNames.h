// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1StringView>

/// Names and time limits on the session bus and the system bus that several adapters share.
namespace corvane::bus {

/// Quillet's own name on the session bus, which is also its desktop entry's.
inline constexpr QLatin1StringView applicationId("com.ordwinsoftware.Quillet");

inline constexpr QLatin1StringView agentName("com.ordwinsoftware.Quillet.NotificationAgent");
inline constexpr QLatin1StringView agentPath("/com/ordwinsoftware/Quillet/NotificationAgent");

inline constexpr QLatin1StringView propertiesInterface("org.freedesktop.DBus.Properties");

/// In milliseconds. A service of the system or the desktop that takes longer to answer a question counts as
/// absent.
inline constexpr int questionTimeout = 3000;

} // namespace corvane::bus
