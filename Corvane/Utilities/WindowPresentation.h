// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QString>

#include <functional>

namespace corvane {

/// Opens a window such that the user sees it, whichever window is in front.
class WindowPresentation {
public:
    WindowPresentation() = delete;

    /// Opens the window of an identifier, or leaves it as it is where it is open.
    using OpenWindow = std::function<void(const QString &identifier)>;

    /// Entitles the program to come to the front, opens the window `id`, and on the next turn of the event
    /// loop brings the first visible window whose title is exactly `title` to the front; none if no window
    /// bears it. Called by every command that opens a window. `windowSystem` outlives the event loop.
    static void open(const QString &id, const QString &title, const OpenWindow &openWindow,
                     WindowSystem &windowSystem);
};

} // namespace corvane
