// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <QRect>

#include <chrono>
#include <optional>
#include <vector>

class QScreen;

namespace corvane {

struct ReservedAreas;
class WaylandConnection;

/// The screens that the toolkit reports. On X11 the visible frame leaves out what window manager and docks
/// reserve. Points are the toolkit's logical pixels; y = 0 is the lower edge of the primary screen.
class ToolkitScreens final : public Screens {
public:
    ToolkitScreens() = default;
    /// Under XWayland, in the session of `compositor` (borrowed). Its X server knows the pointer only while
    /// it is over X11 windows, and not always the monitors' sizes. So with several monitors the compositor's
    /// layout is used, and the pointer counts as where the window manager places a window, unless that takes
    /// longer than `patience`.
    explicit ToolkitScreens(const WaylandConnection &compositor,
                            std::chrono::milliseconds patience = std::chrono::milliseconds(250))
        : m_compositor(&compositor)
        , m_patience(patience)
    {
    }

    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override;
    [[nodiscard]] Point pointerLocation() const override;

private:
    [[nodiscard]] QRect pixelsOf(const QScreen &screen) const;
    [[nodiscard]] Screen describe(const QScreen &screen, const ReservedAreas &reserved) const;
    [[nodiscard]] std::optional<Screen> describe(const QScreen *screen) const;

    const WaylandConnection *m_compositor = nullptr; ///< null on X11
    std::chrono::milliseconds m_patience{0};
};

} // namespace corvane
