// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QString>

#include <optional>
#include <vector>

namespace corvane {

/// One screen of the desktop; rectangles in points, y upwards.
struct Screen {
    QString name;      ///< the platform's name for it; empty for a stand-in where there is no screen
    Rect frame;        ///< the whole screen
    Rect visibleFrame; ///< without the areas that docks keep for themselves

    friend bool operator==(const Screen &, const Screen &) = default;
};

/// The screens, the pointer and the program's own key window. Main thread only; called by the banner
/// presenter at each presentation, so the answers are those of that moment.
class Screens {
public:
    virtual ~Screens() = default;

    /// All screens in the system's order; may be empty.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;

    /// The screen that the desktop calls its main one; none when there is no screen.
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;

    /// The screen of the program's window that has the keyboard focus, if there is such a window.
    [[nodiscard]] virtual std::optional<Screen> keyWindowScreen() const = 0;

    /// Where the pointer is.
    [[nodiscard]] virtual Point pointerLocation() const = 0;
};

} // namespace corvane
