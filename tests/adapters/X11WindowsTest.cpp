// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/adapters/X11WindowsFixture.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

bool hasState(const QWidget &window, const char *state)
{
    const auto states = x11::property(static_cast<std::uint32_t>(window.winId()), "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), x11::atom(state)) != states.end();
}

} // namespace

/// The program's windows under window managers.
class X11WindowsTest final : public X11WindowsFixture {
    Q_OBJECT

public:
    using X11WindowsFixture::X11WindowsFixture;

private Q_SLOTS:
    void aWindowOpensCentredAndReopensWhereItWasMoved_data() { everyManager(); }
    void aWindowOpensCentredAndReopensWhereItWasMoved()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        const QString setup = u"setup"_s;
        open(setup, u"Welcome to Quillet"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(setup)), windowTimeout);
        const QPoint middle((1280 - 680) / 2, (800 - 500) / 2);
        QTRY_COMPARE_WITH_TIMEOUT(m_scenes->window(setup)->pos(), middle, windowTimeout);
        m_scenes->window(setup)->setGeometry(150, 160, 700, 520);
        QTRY_COMPARE_WITH_TIMEOUT(m_scenes->window(setup)->geometry(), QRect(150, 160, 700, 520),
                                  windowTimeout);
        for (int time = 0; time < 3; ++time) { // it does not move by the height of its title bar either
            m_scenes->window(setup)->close();
            open(setup, u"Welcome to Quillet"_s);
            QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(setup)), windowTimeout);
            QTRY_COMPARE_WITH_TIMEOUT(m_scenes->window(setup)->geometry(), QRect(150, 160, 700, 520),
                                      windowTimeout);
        }
    }

    void noWindowIsInTheTaskBar_data() { everyManager(); }
    void noWindowIsInTheTaskBar()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        open(u"help"_s, u"Quillet Help"_s);
        const QWidget *window = m_scenes->window(u"help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
        QVERIFY(hasState(*window, "_NET_WM_STATE_SKIP_TASKBAR"));
        QVERIFY(hasState(*window, "_NET_WM_STATE_SKIP_PAGER"));
        QCOMPARE(window->size(), QSize(920, 620));
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        QVERIFY(hasState(*m_menuBarPanel->window(), "_NET_WM_STATE_SKIP_TASKBAR"));
        m_menuBarPanel->close();
        m_menuBarPanel->openAsWindow({});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        QVERIFY(hasState(*m_menuBarPanel->window(), "_NET_WM_STATE_SKIP_TASKBAR"));
        keepPicture(u"window-"_s + QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-'));
    }

    void anOpenWindowComesToTheFrontAgain_data() { everyManager(); }
    void anOpenWindowComesToTheFrontAgain()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        open(u"help"_s, u"Quillet Help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(u"help"_s)), windowTimeout);
        const WindowId id = m_scenes->window(u"help"_s)->winId();
        oppose();
        QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(m_scenes->window(u"help"_s)), windowTimeout);
        open(u"help"_s, u"Quillet Help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(u"help"_s)), windowTimeout);
        QCOMPARE(m_scenes->window(u"help"_s)->winId(), id);
        QTRY_VERIFY_WITH_TIMEOUT(pixel({640, 400}) != QColor(u"#a0c0e0"_s), windowTimeout);
    }

    void aChangeOfFocusAfterTheRequestDoesNotPreventIt_data() { everyManager(); }
    void aChangeOfFocusAfterTheRequestDoesNotPreventIt()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        open(u"help"_s, u"Quillet Help"_s);
        const QWidget *window = m_scenes->window(u"help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
        oppose();
        QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), windowTimeout);
        m_windowSystem.userAsked({});
        // As a window manager does when it notices later that a window has gone: the focus changes at a time
        // after that of the request.
        const QString opponent = TestDesktop::xdotool({u"getwindowfocus"_s});
        TestDesktop::xdotool({u"windowfocus"_s, opponent.trimmed()});
        m_windowSystem.bringToFront(window->winId());
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
    }

    void aFocusThatAnotherWindowTakesAtOnceIsTakenAgain_data() { everyManager(); }
    void aFocusThatAnotherWindowTakesAtOnceIsTakenAgain()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        open(u"setup"_s, u"Welcome to Quillet"_s);
        const QWidget *other = m_scenes->window(u"setup"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(other), windowTimeout);
        bool isGiven = false;
        bool isTaken = false;
        QObject guard;
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, &guard, [&](const QWindow *focus) {
            if (focus == other->windowHandle()) {
                isTaken = isGiven;
            } else if (focus != nullptr && !std::exchange(isGiven, true)) {
                // As a busy window manager does that changes the focus late.
                TestDesktop::xdotool({u"windowfocus"_s, QString::number(other->winId())});
            }
        });
        open(u"help"_s, u"Quillet Help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(isTaken, windowTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(u"help"_s)), windowTimeout);
    }

    void aWindowThatHadTheFocusDoesNotTakeItBack_data() { everyManager(); }
    void aWindowThatHadTheFocusDoesNotTakeItBack()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        const QString opponent = TestDesktop::xdotool({u"getwindowfocus"_s}).trimmed();
        open(u"help"_s, u"Quillet Help"_s);
        const QWidget *window = m_scenes->window(u"help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
        TestDesktop::xdotool({u"windowfocus"_s, opponent});
        QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), windowTimeout);
        const QDeadlineTimer end(2000); // longer than it would take
        QTRY_VERIFY_WITH_TIMEOUT(end.hasExpired() || hasFocus(window), windowTimeout);
        QVERIFY(!hasFocus(window));
    }

    void anOldRequestDoesNotTakeTheKeyboard()
    {
        use(WindowManager::xfwm4);
        open(u"help"_s, u"Quillet Help"_s);
        const QWidget *window = m_scenes->window(u"help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
        const auto time = x11::serverTime();
        QVERIFY(time.has_value());
        oppose(); // a click: the user's last action
        QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), windowTimeout);
        m_windowSystem.userAsked(u"launcher_TIME%1"_s.arg(*time));
        m_windowSystem.bringToFront(window->winId());
        const QDeadlineTimer end(2000); // longer than a repeated request would take
        QTRY_VERIFY_WITH_TIMEOUT(end.hasExpired() || hasFocus(window), windowTimeout);
        QVERIFY(!hasFocus(window));
    }

    void aMinimizedWindowComesToTheFrontAgain_data() { everyManager(); }
    void aMinimizedWindowComesToTheFrontAgain()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        open(u"help"_s, u"Quillet Help"_s);
        QWidget *window = m_scenes->window(u"help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), windowTimeout);
        TestDesktop::xdotool({u"windowminimize"_s, QString::number(window->winId())});
        QTRY_VERIFY_WITH_TIMEOUT(window->isMinimized(), windowTimeout);
        open(u"help"_s, u"Quillet Help"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window) && !window->isMinimized(), windowTimeout);
    }

    void aTokenTellsTheTimeAndIsPassedOn()
    {
        use(WindowManager::openbox);
        QCOMPARE(ToolkitWindowSystem::timeOf(u"host-1-name_TIME123456"_s), std::optional(123456U));
        QCOMPARE(ToolkitWindowSystem::timeOf(u"a_TIME1_TIME22"_s), std::optional(22U));
        for (const QString &none :
             {u""_s, u"token"_s, u"x_TIME"_s, u"x_TIME0"_s, u"x_TIME12x"_s, u"x_TIME99999999999"_s}) {
            QVERIFY(!ToolkitWindowSystem::timeOf(none));
        }
        const std::uint32_t now = x11::serverTime().value_or(0);
        QVERIFY(now != 0);
        m_windowSystem.userAsked(u"launcher-7_TIME%1"_s.arg(now));
        m_menuBarPanel->open(std::nullopt);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        const auto id = static_cast<std::uint32_t>(m_menuBarPanel->window()->winId());
        QVERIFY(TestDesktop::run(u"xprop"_s, {u"-id"_s, QString::number(id), u"_NET_STARTUP_ID"_s})
                    .contains(u"launcher-7_TIME"_s));
    }

    void withoutAWindowManagerTheWindowsAreShown()
    {
        m_desktop.stopWindowManager();
        QTRY_VERIFY_WITH_TIMEOUT(!isManaged(), windowTimeout);
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(m_menuBarPanel->window()->windowHandle()->isExposed(), windowTimeout);
        m_menuBarPanel->toggle(std::nullopt);
        QVERIFY(!m_menuBarPanel->isOpen());
    }
};

QUILLET_TEST(X11WindowsTest, runX11Windows<X11WindowsTest>);

#include "X11WindowsTest.moc"
