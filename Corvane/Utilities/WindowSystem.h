// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

namespace corvane {

/// A window of the program by the number that the window system gave it, as QWidget::winId() tells it.
using WindowId = quintptr;

/// What the program's windows ask of the window system beyond what the toolkit asks of it. Main thread only;
/// nothing here fails towards the caller: where the window system lacks something, nothing happens.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Whether windows that are partly transparent look so.
    [[nodiscard]] virtual bool isComposited() const = 0;

    /// The user has just asked the program for something. Programs are kept from taking the keyboard by
    /// themselves; this is what entitles the windows that are brought to the front next. `token` is what the
    /// desktop gave along with the wish, or empty.
    virtual void userAsked(const QString &token) = 0;

    /// Keeps `window` out of task bars, docks and pagers. Called when the window is made and not yet shown.
    virtual void keepOutOfTaskBar(WindowId window) = 0;

    /// Puts `window`, which is shown, above the others and gives it the keyboard, from whichever program.
    virtual void bringToFront(WindowId window) = 0;
};

} // namespace corvane
