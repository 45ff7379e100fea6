// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>

namespace corvane {

/// A window of the program by its window system identifier, as QWidget::winId() returns it.
using WindowId = quintptr;

/// What the program's windows need from the window system beyond the toolkit. Main thread only; reports no
/// errors: if the window system lacks a feature, nothing happens.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Whether partly transparent windows are drawn as such.
    [[nodiscard]] virtual bool isComposited() const = 0;

    /// The user has just asked the program for something. Window systems prevent programs from taking the
    /// focus by themselves; this permits the windows that are brought to the front next. `token` is the
    /// desktop's activation token, or empty.
    virtual void userAsked(const QString &token) = 0;

    /// Keeps `window` out of task bars, docks and pagers. Called after the window is created and before it is
    /// shown.
    virtual void keepOutOfTaskBar(WindowId window) = 0;

    /// Raises `window`, which is shown, above all others and gives it the keyboard focus. May repeat the
    /// request for two seconds, until the window has the focus.
    virtual void bringToFront(WindowId window) = 0;

    /// Calls `pressed`, on a later turn of the event loop, for each press of a pointer button outside the
    /// program's windows and their frames. A second call replaces the function; an empty one ends the watch.
    /// Returns whether every press is reported: if false, only some are, or none.
    virtual bool watchPresses(std::function<void()> pressed) = 0;
};

} // namespace corvane
