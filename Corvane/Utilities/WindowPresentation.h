// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QString>

#include <functional>

namespace corvane {

/// Opens a window in front of all others.
class WindowPresentation {
public:
    WindowPresentation() = delete;

    /// Opens the window of an identifier; an open one stays as it is.
    using OpenWindow = std::function<void(const QString &identifier)>;

    /// Requests permission to come to the front, opens the window `id` and, on the next turn of the event
    /// loop, brings the first visible window with exactly this `title` to the front, if there is one. Called
    /// by every command that opens a window. `windowSystem` outlives the event loop.
    static void open(const QString &id, const QString &title, const OpenWindow &openWindow,
                     WindowSystem &windowSystem);
};

} // namespace corvane
