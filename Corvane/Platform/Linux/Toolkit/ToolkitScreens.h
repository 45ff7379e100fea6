// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <optional>
#include <vector>

namespace corvane {

/// The screens as the toolkit tells of them, and, where there is an X server, without what its window manager
/// and docks keep for themselves. Logical pixels are the points, the lower left corner of the primary screen
/// their origin in y.
class ToolkitScreens final : public Screens {
public:
    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override;
    [[nodiscard]] Point pointerLocation() const override;
};

} // namespace corvane
