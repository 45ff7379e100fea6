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

class FootnotedContent;
class MenuBarPanelWindow;

/// The menu bar panel that the bell opens. Its content is built when it opens and destroyed when it closes.
/// There is at most one. Main thread only.
///
/// It closes on Escape, on a second click on the bell, and on a click elsewhere: on a press that the window
/// system reports, or when the keyboard focus goes to another window. If the window system does not report
/// every press, it also closes a minute after the pointer has left it. Opened as an ordinary window, where no
/// bell can open it again, it stays until it is closed.
class MenuBarPanel final : public QObject {
    Q_OBJECT

public:
    using MakeContent = std::function<std::unique_ptr<QWidget>()>;

    /// `makeContent` makes a widget with a size hint. The ports are borrowed.
    MenuBarPanel(MakeContent makeContent, const Screens &screens, WindowSystem &windowSystem,
                 QObject *parent = nullptr);
    ~MenuBarPanel() override;

    /// The bell was clicked, at `item` if known: opens the menu bar panel, or closes it if it is open. If the
    /// same click has just closed it as a click elsewhere, nothing opens.
    void toggle(std::optional<Point> item);

    /// The panel's entry of the bell's menu was chosen: opens the menu bar panel, or closes it if it is open.
    void toggleFromMenu();

    /// Opens the menu bar panel, or brings it to the front if it is open. Without `item`, it opens in the
    /// corner where the bell is most likely.
    void open(std::optional<Point> item);

    /// Who opens the menu bar panel. If it is the program, the keyboard focus stays where it is.
    enum class OpenedBy { user, program };

    /// Opens it as an ordinary window, with `footnote` below the content unless that is empty.
    void openAsWindow(const QString &footnote, OpenedBy openedBy = OpenedBy::user);

    /// Removes the footnote from the open window, if there is one.
    void removeFootnote();

    /// Brings the open menu bar panel to the front again, on a later turn of the event loop: after the
    /// windows that this turn brings there.
    void returnToFront();

    void close();

    /// Keeps the open menu bar panel open when the focus moves to another window of the program, so that both
    /// can be used together. It still closes when the focus moves to another program.
    void stayOpenBesideWindows() { m_staysBesideWindows = true; }

    [[nodiscard]] bool isOpen() const { return m_window != nullptr; }

    /// Whether the menu bar panel is open, was opened by the program, and has not been requested by the user
    /// since.
    [[nodiscard]] bool openedByItself() const { return isOpen() && m_openedBy == OpenedBy::program; }

    /// The menu bar panel's window; nullptr while it is closed.
    [[nodiscard]] QWidget *window() const;

    /// A click on the bell within this time after a click elsewhere closed the menu bar panel is the same
    /// click, unless it is known to be at another place.
    static constexpr Seconds sameClick{0.75};

    /// A press this close to a click on the bell, in points, is on the bell.
    static constexpr double bellReach = 24;

    /// The window's title, for assistive tools and for the title bar of an ordinary window.
    static QString title();

Q_SIGNALS:
    void opened();
    void closed();

private:
    void make(bool isOrdinary, std::optional<Point> item, const QString &footnote);
    void show(OpenedBy openedBy);
    void followScreens(MenuBarPanelWindow *window);
    void watchForClicksElsewhere();
    void pressed();
    void clickedElsewhere(std::optional<Point> press);
    void focusMoved(QWindow *to);
    [[nodiscard]] bool isOwn(const QWindow *window) const;

    MakeContent m_makeContent;
    const Screens &m_screens;
    WindowSystem &m_windowSystem;
    QPointer<QWidget> m_window;
    std::optional<Point> m_item;            ///< where the bell was clicked, if known
    QPointer<FootnotedContent> m_footnoted; ///< the content if it has a footnote
    bool m_isOrdinary = false;
    OpenedBy m_openedBy = OpenedBy::user;
    bool m_hadFocus = false;
    bool m_staysBesideWindows = false;
    std::optional<Seconds> m_lostFocus;  ///< uptime() when a click elsewhere closed it
    std::optional<Point> m_closingPress; ///< where that click was, if known
};

} // namespace corvane
