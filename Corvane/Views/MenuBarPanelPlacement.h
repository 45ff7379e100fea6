// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"
#include "Corvane/Utilities/Geometry.h"

#include <optional>
#include <vector>

namespace corvane {

/// The position of the menu bar panel, in points with y upwards.
struct MenuBarPanelPlacement {
    Rect frame;   ///< on whole points; the requested size, if the screen allows it
    Rect visible; ///< the part of its screen that windows may use; contains the frame

    /// The distance between the menu bar panel and the edges of the visible part.
    static constexpr double gap = 6;
    /// The distance from the bell's centre if the bell is inside the visible part, as in an auto-hiding dock.
    static constexpr double clearance = 18;

    /// Places a menu bar panel of `size` for a bell at `item`: at the edge of the bell's screen that the bell
    /// is nearest to or beyond, centred on the bell along that edge as far as the screen allows. Without
    /// `item`: in the corner of `mainScreen` where the bell is most likely, at the end of the edge with a
    /// panel or dock. `screens` may be empty.
    [[nodiscard]] static MenuBarPanelPlacement
    find(Size size, std::optional<Point> item, const std::vector<Screen> &screens, const Screen &mainScreen);

    friend bool operator==(const MenuBarPanelPlacement &, const MenuBarPanelPlacement &) = default;
};

} // namespace corvane
