// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanel.h"

#include "Corvane/Views/FootnotedContent.h"
#include "Corvane/Views/MenuBarPanelWindow.h"
#include "Corvane/Views/PointerAbsence.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cmath>
#include <utility>

namespace corvane {

namespace {

/// Whether both places are known and too far apart to be one click on the bell.
bool isFar(std::optional<Point> press, std::optional<Point> bell)
{
    return press && bell && std::hypot(press->x - bell->x, press->y - bell->y) > MenuBarPanel::bellReach;
}

} // namespace

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
    m_windowSystem.watchPresses({});
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
    if (!lost || uptime() - *lost >= sameClick || isFar(m_closingPress, item)) {
        open(item);
    }
}

void MenuBarPanel::toggleFromMenu()
{
    if (isOpen()) {
        close();
    } else {
        open(std::nullopt);
    }
}

void MenuBarPanel::open(std::optional<Point> item)
{
    if (!isOpen()) {
        make(false, item, {});
    }
    show(OpenedBy::user);
}

void MenuBarPanel::openAsWindow(const QString &footnote, OpenedBy openedBy)
{
    if (!isOpen()) {
        make(true, std::nullopt, footnote);
    }
    show(openedBy);
}

void MenuBarPanel::make(bool isOrdinary, std::optional<Point> item, const QString &footnote)
{
    m_isOrdinary = isOrdinary;
    m_item = item;
    m_hadFocus = false;
    m_staysBesideWindows = false;
    const auto kind = isOrdinary                      ? MenuBarPanelWindow::Kind::window
                      : m_windowSystem.isComposited() ? MenuBarPanelWindow::Kind::compositedCard
                                                      : MenuBarPanelWindow::Kind::card;
    std::unique_ptr<QWidget> content = m_makeContent();
    if (!footnote.isEmpty()) {
        auto footnoted = std::make_unique<FootnotedContent>(std::move(content), footnote);
        m_footnoted = footnoted.get();
        content = std::move(footnoted);
    }
    auto *window = new MenuBarPanelWindow(kind, std::move(content), [this, item](Size size) {
        return MenuBarPanelPlacement::find(size, item, m_screens.screens(),
                                           m_screens.mainScreen().value_or(Screen{}));
    });
    m_window = window;
    window->setWindowTitle(title());
    connect(window, &MenuBarPanelWindow::dismissed, this, &MenuBarPanel::close);
}

void MenuBarPanel::show(OpenedBy openedBy)
{
    m_openedBy = openedBy;
    if (!m_window->isVisible()) {
        auto *window = static_cast<MenuBarPanelWindow *>(m_window.data());
        // Must be set before winId() creates the native window.
        window->setAttribute(Qt::WA_ShowWithoutActivating, openedBy == OpenedBy::program);
        m_windowSystem.keepOutOfTaskBar(window->winId());
        window->fit();
        followScreens(window);
        window->show();
        watchForClicksElsewhere();
        Q_EMIT opened();
    }
    if (isOpen() && openedBy == OpenedBy::user) {
        m_window->raise();
        m_windowSystem.bringToFront(m_window->winId());
    }
}

void MenuBarPanel::removeFootnote()
{
    if (m_footnoted) {
        m_footnoted->removeFootnote();
    }
}

void MenuBarPanel::returnToFront()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isOpen()) {
                // A window manager may give the other window the focus at a later time than the user's
                // request; the X server then ignores one of the time of that request.
                m_windowSystem.userAsked({});
                show(OpenedBy::user);
            }
        },
        Qt::QueuedConnection);
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

void MenuBarPanel::watchForClicksElsewhere()
{
    if (m_isOrdinary) {
        return;
    }
    if (!m_windowSystem.watchPresses([this] { pressed(); })) {
        auto *absence = new PointerAbsence(m_window->windowHandle());
        connect(absence, &PointerAbsence::lasted, this, [this, absence] {
            // It stays beside a window of the program that is in use.
            const QWindow *focus = QGuiApplication::focusWindow();
            if (m_staysBesideWindows && focus != nullptr && !isOwn(focus)) {
                absence->beginAnew();
            } else {
                close();
            }
        });
    }
}

void MenuBarPanel::close()
{
    if (!isOpen()) {
        return;
    }
    m_windowSystem.watchPresses({});
    QWidget *window = m_window;
    m_window = nullptr;
    window->disconnect(this);
    window->hide();
    // Deferred: a button in the window may have called this.
    window->deleteLater();
    Q_EMIT closed();
}

void MenuBarPanel::pressed()
{
    // The host reports a click on the bell a little later.
    const Point pointer = m_screens.pointerLocation();
    if (!m_item || isFar(pointer, m_item)) {
        clickedElsewhere(pointer);
    }
}

void MenuBarPanel::clickedElsewhere(std::optional<Point> press)
{
    m_lostFocus = uptime();
    m_closingPress = press;
    close();
}

// Whether it belongs to the menu bar panel or to one of its dialogs.
bool MenuBarPanel::isOwn(const QWindow *window) const
{
    const QWindow *menuBarPanel = m_window->windowHandle();
    while (window != nullptr && window != menuBarPanel) {
        window = window->transientParent();
    }
    return window != nullptr;
}

void MenuBarPanel::focusMoved(QWindow *to)
{
    if (!isOpen() || m_isOrdinary) {
        return;
    }
    if (isOwn(to)) {
        m_hadFocus = true;
        return;
    }
    if (to != nullptr && m_staysBesideWindows) {
        // Another window of the program may get the focus before the menu bar panel does.
        m_hadFocus = true;
        return;
    }
    // Before the panel has had the focus, a focus change concerns other windows only.
    if (m_hadFocus) {
        clickedElsewhere(std::nullopt);
    }
}

} // namespace corvane
