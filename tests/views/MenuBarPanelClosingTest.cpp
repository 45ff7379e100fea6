// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/PointerAbsence.h"

#include "tests/support/FakeScreens.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Pictures.h"

#include <QApplication>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Point clickedBell{700, 890};
constexpr Seconds almostAMinute{59.9};
constexpr Seconds aMoment{0.2};

} // namespace

/// How the menu bar panel closes if the window system reports every press, and if it reports none.
class MenuBarPanelClosingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = std::make_unique<ManualClock>(dateSince1970(1'800'000'000));
        m_windowSystem = {};
        m_screens = {};
        m_menuBarPanel = std::make_unique<MenuBarPanel>(
            [] {
                auto content = std::make_unique<QWidget>();
                content->setFixedSize(320, 200);
                return content;
            },
            m_screens, m_windowSystem);
    }

    void cleanup()
    {
        m_menuBarPanel.reset();
        m_clock.reset();
    }

    // --- every press is reported

    void aPressElsewhereClosesItEvenIfItKeepsTheFocus()
    {
        open();
        m_windowSystem.pressElsewhere();
        QVERIFY(!m_menuBarPanel->isOpen());
        m_menuBarPanel->toggle(clickedBell);
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void aPressOnAnotherPartOfTheBellClosesItOnce()
    {
        open();
        m_screens.pointer = {clickedBell.x + 60, clickedBell.y};
        m_windowSystem.pressElsewhere();
        QVERIFY(!m_menuBarPanel->isOpen());
        m_menuBarPanel->toggle(m_screens.pointer);
        QVERIFY(!m_menuBarPanel->isOpen());
        m_menuBarPanel->toggle(m_screens.pointer);
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void aClickAtAnUnknownPlaceCountsAsThePressThatClosedIt()
    {
        open();
        m_windowSystem.pressElsewhere();
        m_menuBarPanel->toggle(std::nullopt);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void aPressOnTheBellIsLeftToItsHost()
    {
        open();
        m_screens.pointer = {clickedBell.x + 10, clickedBell.y - 10};
        m_windowSystem.pressElsewhere();
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->toggle(clickedBell);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void pressesAreWatchedOnlyWhileItIsOpen()
    {
        QVERIFY(!m_windowSystem.onPress);
        open();
        QVERIFY(m_windowSystem.onPress);
        m_menuBarPanel->close();
        QVERIFY(!m_windowSystem.onPress);
        open();
        m_menuBarPanel.reset();
        QVERIFY(!m_windowSystem.onPress);
    }

    void aPressElsewhereDoesNotCloseAnOrdinaryWindow()
    {
        m_menuBarPanel->openAsWindow({});
        m_windowSystem.pressElsewhere();
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void itStaysOpenUntilAPress()
    {
        open();
        pointerLeaves();
        m_clock->advance(10 * PointerAbsence::limit);
        QVERIFY(m_menuBarPanel->isOpen());
    }

    // --- no press is reported, as under some compositors

    void itClosesAMinuteAfterThePointerHasLeft()
    {
        m_windowSystem.tellsPresses = false;
        open();
        pointerEnters();
        m_clock->advance(2 * PointerAbsence::limit);
        QVERIFY(m_menuBarPanel->isOpen());
        pointerLeaves();
        m_windowSystem.pressElsewhere();
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        m_clock->advance(aMoment);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void aPointerThatReturnsKeepsItOpen()
    {
        m_windowSystem.tellsPresses = false;
        open();
        pointerEnters();
        pointerLeaves();
        m_clock->advance(almostAMinute);
        pointerEnters();
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        pointerLeaves();
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        m_clock->advance(aMoment);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void withoutThePointerItClosesAMinuteAfterOpening()
    {
        m_windowSystem.tellsPresses = false;
        open();
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        m_clock->advance(aMoment);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void aKeyKeepsItOpenForAnotherMinute()
    {
        m_windowSystem.tellsPresses = false;
        open();
        for (int keys = 0; keys < 3; ++keys) {
            m_clock->advance(almostAMinute);
            QTest::keyClick(m_menuBarPanel->window()->windowHandle(), Qt::Key_Tab);
        }
        QVERIFY(m_menuBarPanel->isOpen());
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        m_clock->advance(aMoment);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void itStaysOpenBesideAWindowInUse()
    {
        m_windowSystem.tellsPresses = false;
        open();
        m_menuBarPanel->stayOpenBesideWindows();
        auto other = std::make_unique<QWidget>();
        other->show();
        other->activateWindow();
        QTRY_VERIFY(other->isActiveWindow());
        m_clock->advance(3 * PointerAbsence::limit);
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->window()->activateWindow();
        QTRY_VERIFY(m_menuBarPanel->window()->isActiveWindow());
        m_clock->advance(PointerAbsence::limit);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void theBellItsMenuEntryAndEscapeCloseIt()
    {
        m_windowSystem.tellsPresses = false;
        open();
        m_menuBarPanel->toggle(clickedBell);
        QVERIFY(!m_menuBarPanel->isOpen());
        m_menuBarPanel->toggleFromMenu();
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->toggleFromMenu();
        QVERIFY(!m_menuBarPanel->isOpen());
        open();
        QTest::keyClick(m_menuBarPanel->window(), Qt::Key_Escape);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void theTimerOfAClosedPanelDoesNotCloseTheNext()
    {
        m_windowSystem.tellsPresses = false;
        open();
        m_clock->advance(almostAMinute);
        m_menuBarPanel->toggle(clickedBell);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        open();
        m_clock->advance(almostAMinute);
        QVERIFY(m_menuBarPanel->isOpen());
        QCOMPARE(m_clock->waitCount(), std::size_t{1});
    }

    // A press on the bell's menu may count as a press elsewhere.
    void theMenuEntryReopensAPanelThatTheMenuClosed()
    {
        open();
        m_windowSystem.pressElsewhere();
        m_menuBarPanel->toggleFromMenu();
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void itReturnsToTheFrontAfterWindowsRaisedInTheSameTurn()
    {
        open();
        m_windowSystem.calls.clear();
        const WindowId menuBarPanel = m_menuBarPanel->window()->winId();
        const auto raiseAnother = [this] { m_windowSystem.bringToFront(1); };
        QMetaObject::invokeMethod(this, raiseAnother, Qt::QueuedConnection);
        m_menuBarPanel->returnToFront();
        QTRY_COMPARE(m_windowSystem.broughtToFront, (QList<WindowId>{menuBarPanel, 1, menuBarPanel}));
        // With a request of its own: that of the other window may be too old by then.
        QCOMPARE(m_windowSystem.calls, (QStringList{u"front"_s, u"asked"_s, u"front"_s}));
        // A panel that has been closed in the meantime stays closed.
        m_menuBarPanel->returnToFront();
        m_menuBarPanel->close();
        QCoreApplication::processEvents();
        QVERIFY(!m_menuBarPanel->isOpen());
    }

private:
    void open()
    {
        m_menuBarPanel->open(clickedBell);
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->window()->activateWindow();
        QTRY_VERIFY(m_menuBarPanel->window()->isActiveWindow());
    }

    void pointerEnters()
    {
        QEnterEvent event({5, 5}, {5, 5}, {5, 5});
        QCoreApplication::sendEvent(m_menuBarPanel->window()->windowHandle(), &event);
    }

    void pointerLeaves()
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(m_menuBarPanel->window()->windowHandle(), &event);
    }

    FakeWindowSystem m_windowSystem;
    FakeScreens m_screens;
    std::unique_ptr<ManualClock> m_clock;
    std::unique_ptr<MenuBarPanel> m_menuBarPanel;
};

QUILLET_TEST(MenuBarPanelClosingTest, runViewTest<MenuBarPanelClosingTest>);

#include "MenuBarPanelClosingTest.moc"
