// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <optional>
#include <vector>

namespace corvane {

class WaylandConnection;
struct WaylandOutput;

/// The screens as the compositor describes them. The first one is the main screen, and its lower left corner
/// is the origin in y. A compositor reports neither what docks reserve nor where the pointer is while it is
/// over other programs. With several monitors, the pointer counts as in the middle of the one that the
/// compositor prefers; else as where the toolkit last saw it, or in the middle of the main screen if that
/// position is on no screen.
class WaylandScreens final : public Screens {
public:
    /// `connection` is borrowed.
    explicit WaylandScreens(WaylandConnection &connection) : m_connection(connection) {}

    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override;
    [[nodiscard]] Point pointerLocation() const override;

private:
    [[nodiscard]] Screen describe(const WaylandOutput &output) const;

    WaylandConnection &m_connection;
};

} // namespace corvane
