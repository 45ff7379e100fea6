// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/WindowSystem.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QWindow;

namespace corvane {

class MenuBarPanelWindow;

/// The menu bar panel that the bell opens: its content is made when it opens and destroyed when it closes.
/// There is one at most. Main thread only.
///
/// It closes on Escape, on a second click on the bell, and as soon as the keyboard goes to another window.
/// Opened as an ordinary window, where there is no bell to open it again, it stays until it is closed.
class MenuBarPanel final : public QObject {
    Q_OBJECT

public:
    using MakeContent = std::function<std::unique_ptr<QWidget>()>;

    /// `makeContent` makes a widget that knows its own size. The ports are borrowed.
    MenuBarPanel(MakeContent makeContent, const Screens &screens, WindowSystem &windowSystem,
                 QObject *parent = nullptr);
    ~MenuBarPanel() override;

    /// The bell was clicked, at `item` if that is known: opens the menu bar panel, or closes the one that is
    /// open. A click that has taken the keyboard from the menu bar panel, and so closed it already, does not
    /// open it again.
    void toggle(std::optional<Point> item);

    /// Opens the menu bar panel, or brings the one that is open to the front. Without `item` it stands in the
    /// corner that the bell most likely is in.
    void open(std::optional<Point> item);

    /// Who opens the menu bar panel. What opens by itself leaves the keyboard where it is.
    enum class OpenedBy { user, program };

    /// The same as an ordinary window.
    void openAsWindow(OpenedBy openedBy = OpenedBy::user);

    void close();

    /// From now on the menu bar panel that is open stays when the keyboard goes to another window of the
    /// program, so that both can be used beside one another. It still closes when it goes to another program.
    void stayOpenBesideWindows() { m_staysBesideWindows = true; }

    [[nodiscard]] bool isOpen() const { return m_window != nullptr; }

    /// Whether the menu bar panel that is open opened by itself, and nobody has asked for it since.
    [[nodiscard]] bool openedByItself() const { return isOpen() && m_openedBy == OpenedBy::program; }

    /// The menu bar panel's window while it is open.
    [[nodiscard]] QWidget *window() const;

    /// A click on the bell that comes within this time after the keyboard left the menu bar panel is the one
    /// that took it.
    static constexpr Seconds sameClick{0.75};

    /// What the window is called, to assistive tools and where it stands as an ordinary one.
    static QString title();

Q_SIGNALS:
    void opened();
    void closed();

private:
    void show(bool isOrdinary, std::optional<Point> item, OpenedBy openedBy);
    void followScreens(MenuBarPanelWindow *window);
    void focusMoved(QWindow *to);

    MakeContent m_makeContent;
    const Screens &m_screens;
    WindowSystem &m_windowSystem;
    QPointer<QWidget> m_window;
    bool m_isOrdinary = false;
    OpenedBy m_openedBy = OpenedBy::user;
    bool m_hadFocus = false;
    bool m_staysBesideWindows = false;
    std::optional<Seconds> m_lostFocus; ///< when the menu bar panel closed because the keyboard left it
};

} // namespace corvane
