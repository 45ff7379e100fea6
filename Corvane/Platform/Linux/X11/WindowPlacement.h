// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <chrono>
#include <optional>

namespace corvane::x11 {

/// The pixel where the window manager puts a new splash screen: on GNOME, the middle of the monitor with the
/// pointer. Found by showing a transparent pixel below all other windows for a moment, without the focus and
/// in no list of windows. None if the window manager does not place it, or without an X server. Blocks for
/// some milliseconds, `patience` if the window manager is busy. Main thread only.
[[nodiscard]] std::optional<PixelPoint> placeOfNewWindow(std::chrono::milliseconds patience);

} // namespace corvane::x11
