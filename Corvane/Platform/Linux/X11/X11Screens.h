// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

namespace corvane {

/// The screens as Qt and the window manager tell of them. Logical pixels are the points, the lower left
/// corner of the primary screen their origin in y. Works, with the whole screens as visible ones, where there
/// is no X server.
class X11Screens final : public Screens {
public:
    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override;
    [[nodiscard]] Point pointerLocation() const override;
};

} // namespace corvane
