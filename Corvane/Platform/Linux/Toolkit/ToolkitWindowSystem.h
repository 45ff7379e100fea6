// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/PressWatch.h"
#include "Corvane/Utilities/WindowSystem.h"

#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QWindow;

namespace corvane {

/// The window system behind the toolkit's windows: what the toolkit supports, and on X11 also the window
/// manager requests that the toolkit does not make.
///
/// A window manager gives the keyboard to a window only if the user's request is newer than the last user
/// action in the active window. The bell belongs to another program, so the server's timestamp of the click
/// never arrives here. The time in the desktop's activation token is used instead, or else the server's time
/// when the request arrives.
///
/// The X server ignores a request for the keyboard that is older than its last change of focus. A busy window
/// manager changes the focus late, for example when it learns that the panel has gone. So a window that lacks
/// the keyboard, or loses it to another window of this program within a moment, is activated again with the
/// current time, three times at most. A request with a token's time is not repeated: the user may have done
/// something else since then.
class ToolkitWindowSystem final : public WindowSystem {
public:
    ToolkitWindowSystem();
    [[nodiscard]] bool isComposited() const override;
    void userAsked(const QString &token) override;
    void keepOutOfTaskBar(WindowId window) override;
    void bringToFront(WindowId window) override;
    bool watchPresses(std::function<void()> pressed) override;

    /// The server's time in an activation token, in milliseconds; none if the token contains none.
    [[nodiscard]] static std::optional<std::uint32_t> timeOf(const QString &token);

private:
    void focusMoved(const QWindow *window);
    void activateAgain();

    std::uint32_t m_userTime = 0; ///< the user's last request in server time, milliseconds; 0 if unknown
    QString m_token;              ///< of the last request, until a window has used it
    std::unique_ptr<x11::PressWatch> m_presses;
    WindowId m_activated = 0; ///< the last window that was brought to the front
    bool m_hadFocus = false;  ///< since that
    int m_activationsLeft = 0;
    QTimer m_nextActivation;
};

} // namespace corvane
