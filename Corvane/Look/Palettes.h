// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QPalette>

/// Pure functions that make palettes.
namespace corvane::look {

/// The program's own palettes.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

/// The toolkit's palette `toolkits` if it agrees with the desktop's colour scheme, else one of our own; with
/// the desktop's accent if that is known.
[[nodiscard]] QPalette withAppearance(const QPalette &toolkits, const Appearance &appearance);

} // namespace corvane::look
