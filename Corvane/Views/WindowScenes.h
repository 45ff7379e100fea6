// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QByteArray>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace corvane {

class Screens;

/// A window that the program can open, at most once at a time.
struct WindowScene {
    QString identifier;
    QString title;     ///< also identifies the window when it is brought to the front
    QSize defaultSize; ///< in points; limited by the screen
    /// Makes the window, not yet shown. If its height depends on its width, it opens taller than the default
    /// where that is needed to show everything.
    std::function<std::unique_ptr<QWidget>()> makeContent;
};

/// The program's windows by identifier: created when opened, destroyed when closed, never in a task bar or
/// dock. A window opens in the middle of the pointer's screen; if the user has moved or resized it, it
/// reopens where it was closed. Main thread only.
class WindowScenes {
public:
    /// Both ports are borrowed.
    WindowScenes(WindowSystem &windowSystem, const Screens &screens)
        : m_windowSystem(windowSystem)
        , m_screens(screens)
    {
    }
    /// Destroys the open windows.
    ~WindowScenes();
    WindowScenes(const WindowScenes &) = delete;
    WindowScenes &operator=(const WindowScenes &) = delete;

    /// Adds a scene; its identifier must be new.
    void add(WindowScene scene);

    /// Whether there is such a scene; commands for other windows are not offered.
    [[nodiscard]] bool has(const QString &identifier) const;

    /// Opens the window; does nothing if it is open or the identifier is unknown. `takesFocus` is false for a
    /// window that nobody requested.
    void open(const QString &identifier, bool takesFocus = true);

    /// The window; nullptr if it is not open.
    [[nodiscard]] QWidget *window(const QString &identifier) const;

private:
    struct Entry {
        WindowScene scene;
        QPointer<QWidget> window;
        QByteArray geometry; ///< where the user left it, in the toolkit's format; empty until then
    };

    [[nodiscard]] const Entry *find(const QString &identifier) const;
    [[nodiscard]] QRect middle(const QWidget &window, QSize defaultSize) const;
    void place(std::size_t index);

    WindowSystem &m_windowSystem;
    const Screens &m_screens;
    std::vector<Entry> m_entries;
};

} // namespace corvane
