// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/X11Connection.h"

namespace corvane {

/// Whether a window manager says on the display that it is there.
[[nodiscard]] inline bool isManaged()
{
    // The property outlives a manager that was killed; the window it names does not.
    const auto window = x11::property(x11::rootWindow(), "_NET_SUPPORTING_WM_CHECK");
    return !window.empty() && x11::property(window.front(), "_NET_SUPPORTING_WM_CHECK") == window;
}

} // namespace corvane
