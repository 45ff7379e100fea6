// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"
#include "Corvane/Utilities/Geometry.h"

#include <optional>
#include <vector>

namespace corvane {

/// Where the menu bar panel stands, in points with y upwards.
struct MenuBarPanelPlacement {
    Rect frame;   ///< of the menu bar panel, on whole points; as wide and as high as asked where the screen
                  ///< allows it
    Rect visible; ///< the part of its screen that windows may use; the frame lies within it

    /// The distance kept between the menu bar panel and the edges of the visible part.
    static constexpr double gap = 6;
    /// How far from the middle of the bell the menu bar panel keeps, where the bell stands in the visible
    /// part itself, as in a dock that hides by itself.
    static constexpr double clearance = 18;

    /// A menu bar panel of `size` for a bell at `item`: at the edge of its screen that it is nearest to or
    /// beyond, and along that edge centred on it as far as the screen allows. Without `item`, in the corner
    /// of `mainScreen` that the bell most likely stands in: on the edge that is kept for a dock, at its end.
    /// `screens` may be empty.
    [[nodiscard]] static MenuBarPanelPlacement
    find(Size size, std::optional<Point> item, const std::vector<Screen> &screens, const Screen &mainScreen);

    friend bool operator==(const MenuBarPanelPlacement &, const MenuBarPanelPlacement &) = default;
};

} // namespace corvane
