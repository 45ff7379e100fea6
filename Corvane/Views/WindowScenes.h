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

/// A window that the program can open, of which there is one at most.
struct WindowScene {
    QString identifier;
    QString title;     ///< also what the window is found by, when it is to be brought to the front
    QSize defaultSize; ///< in points; a smaller screen makes it smaller
    /// Makes what the window shows: the window itself, not yet shown. Where its height depends on its width,
    /// it is to be seen whole, and opens higher than the default where it needs that.
    std::function<std::unique_ptr<QWidget>()> makeContent;
};

/// The windows of the program by their identifiers: made when they are opened, destroyed when they are
/// closed, in no task bar or dock meanwhile. A window opens in the middle of the screen that the pointer is
/// on; one that the user had moved or resized opens where it was closed. Main thread only.
class WindowScenes {
public:
    /// Both are borrowed.
    WindowScenes(WindowSystem &windowSystem, const Screens &screens)
        : m_windowSystem(windowSystem)
        , m_screens(screens)
    {
    }
    /// Closes the windows that are open.
    ~WindowScenes();
    WindowScenes(const WindowScenes &) = delete;
    WindowScenes &operator=(const WindowScenes &) = delete;

    /// Adds a scene; one of the same identifier must not be there yet.
    void add(WindowScene scene);

    /// Whether there is such a scene; a command that would open another one is not offered.
    [[nodiscard]] bool has(const QString &identifier) const;

    /// Opens the window if it is not open. Nothing happens for an identifier that is not known.
    /// `takesFocus` is false for one that nobody asked for.
    void open(const QString &identifier, bool takesFocus = true);

    /// The window if it is open.
    [[nodiscard]] QWidget *window(const QString &identifier) const;

private:
    struct Entry {
        WindowScene scene;
        QPointer<QWidget> window;
        QByteArray geometry; ///< where the user left it, as the toolkit keeps it; empty until then
    };

    [[nodiscard]] const Entry *find(const QString &identifier) const;
    [[nodiscard]] QRect middle(const QWidget &window, QSize defaultSize) const;
    void place(std::size_t index);

    WindowSystem &m_windowSystem;
    const Screens &m_screens;
    std::vector<Entry> m_entries;
};

} // namespace corvane
