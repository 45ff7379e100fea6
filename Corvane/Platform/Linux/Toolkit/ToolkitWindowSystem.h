// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace corvane {

/// The window system that the toolkit's windows are in: what the toolkit can do, and, where that is an X
/// server with a window manager, what it does not ask of one.
///
/// A window manager lets a window have the keyboard whose user acted later than that of the window in front.
/// The bell is another program's window, so that the server's time of the click never reaches this program:
/// the moment at which it hears of the wish is taken, or the one that the desktop's token tells.
class ToolkitWindowSystem final : public WindowSystem {
public:
    [[nodiscard]] bool isComposited() const override;
    void userAsked(const QString &token) override;
    void keepOutOfTaskBar(WindowId window) override;
    void bringToFront(WindowId window) override;

    /// The server's time in a token of the desktop, milliseconds; none when it tells none.
    [[nodiscard]] static std::optional<std::uint32_t> timeOf(const QString &token);

private:
    std::uint32_t m_userTime =
        0;           ///< when the user last asked, by the server's clock; 0 when that is not known
    QString m_token; ///< of the last wish, until a window has used it
};

} // namespace corvane
