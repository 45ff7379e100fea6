// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <optional>
#include <vector>

namespace corvane {

/// The screens that the toolkit reports. On X11 the visible frame leaves out what window manager and docks
/// reserve. Points are the toolkit's logical pixels; y = 0 is the lower edge of the primary screen.
class ToolkitScreens final : public Screens {
public:
    /// How the pointer's position is found.
    enum class Pointer {
        fromServer,        ///< asks the X server
        fromWindowManager, ///< with several monitors, has the window manager place a window: in a Wayland
                           ///< session, the X server knows the pointer only while it is over X11 windows
    };

    explicit ToolkitScreens(Pointer pointer = Pointer::fromServer) : m_pointer(pointer) {}

    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override;
    [[nodiscard]] Point pointerLocation() const override;

private:
    Pointer m_pointer;
};

} // namespace corvane
