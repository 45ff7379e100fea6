// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLatin1StringView>

/// What several adapters of services on the session bus and the system bus share.
namespace corvane::bus {

inline constexpr QLatin1StringView propertiesInterface("org.freedesktop.DBus.Properties");

/// In milliseconds. A service of the system or the desktop that takes longer to answer a question counts as
/// absent.
inline constexpr int questionTimeout = 3000;

} // namespace corvane::bus
