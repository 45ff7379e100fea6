// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1StringView>

/// Names that the program and its agent share.
namespace corvane::names {

/// Quillet on the session bus; also its desktop entry and its icon.
inline constexpr QLatin1StringView application("com.ordwinsoftware.Quillet");

/// The agent on the session bus; also its autostart entry.
inline constexpr QLatin1StringView agent("com.ordwinsoftware.Quillet.NotificationAgent");
inline constexpr QLatin1StringView agentPath("/com/ordwinsoftware/Quillet/NotificationAgent");

/// The beginning of the identifiers of backups.
inline constexpr QLatin1StringView backupPrefix("quillet.backup.");

} // namespace corvane::names
