// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QString>

#include <optional>
#include <vector>

namespace corvane {

/// One screen of the desktop; rectangles in points, y points up.
struct Screen {
    QString name;      ///< the platform's name; empty for a stand-in where there is no screen
    Rect frame;        ///< the whole screen
    Rect visibleFrame; ///< without the areas reserved by docks

    friend bool operator==(const Screen &, const Screen &) = default;
};

/// The screens, the pointer and the program's key window. Main thread only; the banner presenter queries it
/// at each presentation, so the answers are current.
class Screens {
public:
    virtual ~Screens() = default;

    /// All screens in the system's order; may be empty.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;

    /// The desktop's main screen; none if there is no screen.
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;

    /// The screen of the program's window with the keyboard focus, if there is one.
    [[nodiscard]] virtual std::optional<Screen> keyWindowScreen() const = 0;

    /// May block for a quarter of a second. The screens may be others afterwards.
    [[nodiscard]] virtual Point pointerLocation() const = 0;
};

} // namespace corvane
