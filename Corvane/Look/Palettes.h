// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QPalette>

/// Palettes as pure functions.
namespace corvane::look {

/// This program's own light and dark palette.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

/// `toolkits` where it agrees with what the desktop says of itself; else a palette of our own. With the
/// desktop's accent, if that is known.
[[nodiscard]] QPalette withAppearance(const QPalette &toolkits, const Appearance &appearance);

} // namespace corvane::look
