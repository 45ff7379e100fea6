// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanel.h"

#include "Corvane/Views/MenuBarPanelWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

MenuBarPanel::MenuBarPanel(MakeContent makeContent, const Screens &screens, WindowSystem &windowSystem,
                           QObject *parent)
    : QObject(parent)
    , m_makeContent(std::move(makeContent))
    , m_screens(screens)
    , m_windowSystem(windowSystem)
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &MenuBarPanel::focusMoved);
}

MenuBarPanel::~MenuBarPanel()
{
    delete m_window;
}

QString MenuBarPanel::title()
{
    return u"Quillet"_s;
}

QWidget *MenuBarPanel::window() const
{
    return m_window;
}

void MenuBarPanel::toggle(std::optional<Point> item)
{
    if (isOpen()) {
        close();
        return;
    }
    const auto lost = std::exchange(m_lostFocus, std::nullopt);
    if (!lost || uptime() - *lost >= sameClick) {
        open(item);
    }
}

void MenuBarPanel::open(std::optional<Point> item)
{
    show(false, item, OpenedBy::user);
}

void MenuBarPanel::openAsWindow(OpenedBy openedBy)
{
    show(true, std::nullopt, openedBy);
}

void MenuBarPanel::show(bool isOrdinary, std::optional<Point> item, OpenedBy openedBy)
{
    m_openedBy = openedBy;
    if (!isOpen()) {
        m_isOrdinary = isOrdinary;
        m_hadFocus = false;
        m_staysBesideWindows = false;
        const auto kind = isOrdinary                      ? MenuBarPanelWindow::Kind::window
                          : m_windowSystem.isComposited() ? MenuBarPanelWindow::Kind::compositedCard
                                                          : MenuBarPanelWindow::Kind::card;
        auto *window = new MenuBarPanelWindow(kind, m_makeContent(), [this, item](Size size) {
            return MenuBarPanelPlacement::find(size, item, m_screens.screens(),
                                               m_screens.mainScreen().value_or(Screen{}));
        });
        m_window = window;
        window->setWindowTitle(title());
        // Must be set before winId() creates the native window.
        window->setAttribute(Qt::WA_ShowWithoutActivating, openedBy == OpenedBy::program);
        connect(window, &MenuBarPanelWindow::dismissed, this, &MenuBarPanel::close);
        m_windowSystem.keepOutOfTaskBar(window->winId());
        window->fit();
        followScreens(window);
        window->show();
        Q_EMIT opened();
    }
    if (isOpen() && openedBy == OpenedBy::user) {
        m_window->raise();
        m_windowSystem.bringToFront(m_window->winId());
    }
}

void MenuBarPanel::followScreens(MenuBarPanelWindow *window)
{
    // The panel's screen may be removed or shrink.
    connect(qGuiApp, &QGuiApplication::screenRemoved, window, &MenuBarPanelWindow::fit, Qt::QueuedConnection);
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        connect(screen, &QScreen::availableGeometryChanged, window, &MenuBarPanelWindow::fit,
                Qt::QueuedConnection);
    }
}

void MenuBarPanel::close()
{
    if (!isOpen()) {
        return;
    }
    QWidget *window = m_window;
    m_window = nullptr;
    window->disconnect(this);
    window->hide();
    // Deferred: a button in the window may have called this.
    window->deleteLater();
    Q_EMIT closed();
}

void MenuBarPanel::focusMoved(QWindow *to)
{
    if (!isOpen() || m_isOrdinary) {
        return;
    }
    const QWindow *menuBarPanel = m_window->windowHandle();
    for (const QWindow *window = to; window != nullptr; window = window->transientParent()) {
        if (window == menuBarPanel) {
            m_hadFocus = true;
            return;
        }
    }
    if (to != nullptr && m_staysBesideWindows) {
        // Another window of the program may get the focus before the menu bar panel does.
        m_hadFocus = true;
    }
    // Before the panel has had the focus, a focus change concerns other windows only.
    if (m_hadFocus && !(to != nullptr && m_staysBesideWindows)) {
        m_lostFocus = uptime();
        close();
    }
}

} // namespace corvane
