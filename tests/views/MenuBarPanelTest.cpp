// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/MenuBarPanelPlacement.h"

#include "tests/support/FakeScreens.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Pictures.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// Stands for the real content: 320 points wide, of a given height.
class Content final : public QWidget {
public:
    explicit Content(int height) : m_label(new QLabel(this)), m_button(new QPushButton(u"Button"_s, this))
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->addWidget(m_label);
        layout->addWidget(m_button);
        setFixedWidth(320);
        setContentHeight(height);
    }

    void setContentHeight(int height) { m_label->setFixedHeight(height - 40), m_button->setFixedHeight(34); }

    QLabel *m_label;
    QPushButton *m_button;
};

} // namespace

class MenuBarPanelTest final : public QObject {
    Q_OBJECT

private:
    FakeWindowSystem m_windowSystem;
    FakeScreens m_screens;
    std::unique_ptr<ManualClock> m_clock;
    std::unique_ptr<MenuBarPanel> m_menuBarPanel;
    QPointer<Content> m_content;
    int m_made = 0;

    void make(int height = 300)
    {
        m_menuBarPanel = std::make_unique<MenuBarPanel>(
            [this, height] {
                ++m_made;
                auto content = std::make_unique<Content>(height);
                m_content = content.get();
                return content;
            },
            m_screens, m_windowSystem);
    }

    void openWithFocus(std::optional<Point> item = Point{700, 890})
    {
        m_menuBarPanel->toggle(item);
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->window()->activateWindow();
        QTRY_VERIFY(m_menuBarPanel->window()->isActiveWindow());
    }

    /// Another window of the program, which takes the keyboard focus.
    static std::unique_ptr<QWidget> otherWindow()
    {
        auto other = std::make_unique<QWidget>();
        other->show();
        other->activateWindow();
        return other;
    }

private Q_SLOTS:
    void init()
    {
        m_clock = std::make_unique<ManualClock>(dateSince1970(1'800'000'000));
        m_windowSystem = {};
        m_screens = {};
        const QRect frame = QGuiApplication::primaryScreen()->geometry();
        const Screen screen{u"A"_s,
                            {0, 0, double(frame.width()), double(frame.height())},
                            {0, 0, double(frame.width()), double(frame.height()) - 30}};
        m_screens.allScreens = {screen};
        m_screens.main = screen;
        m_made = 0;
    }

    void cleanup()
    {
        m_menuBarPanel.reset();
        m_clock.reset();
    }

    void theContentExistsOnlyWhileTheMenuBarPanelIsOpen()
    {
        make();
        QCOMPARE(m_made, 0);
        m_menuBarPanel->toggle(Point{700, 790});
        QCOMPARE(m_made, 1);
        QVERIFY(m_content->isVisible());
        m_menuBarPanel->close();
        QVERIFY(!m_menuBarPanel->isOpen());
        QTRY_VERIFY(m_content.isNull());
        m_menuBarPanel->toggle(Point{700, 790});
        QCOMPARE(m_made, 2);
    }

    void theWindowIsAFocusableToolWithoutAFrame()
    {
        make();
        m_menuBarPanel->toggle(Point{700, 790});
        const Qt::WindowFlags flags = m_menuBarPanel->window()->windowFlags();
        QCOMPARE(flags & Qt::WindowType_Mask, Qt::Tool);
        QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
        QVERIFY(!flags.testFlag(Qt::WindowDoesNotAcceptFocus));
        QCOMPARE(m_windowSystem.keptOut, QList<WindowId>{m_menuBarPanel->window()->winId()});
        QCOMPARE(m_windowSystem.broughtToFront, QList<WindowId>{m_menuBarPanel->window()->winId()});
    }

    void theWindowFitsItsContentAndIsPlacedAtTheBell()
    {
        make(300);
        m_menuBarPanel->toggle(Point{400, 595});
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const Rect expected =
            MenuBarPanelPlacement::find({320, double(m_content->sizeHint().height())}, Point{400, 595},
                                        m_screens.allScreens, *m_screens.main)
                .frame;
        QCOMPARE(m_menuBarPanel->window()->geometry(),
                 QRect(int(expected.x), int(screen.height() - expected.maxY()), 320, int(expected.height)));
        QCOMPARE(m_content->width(), 320);
    }

    void withACompositorItHasAShadowWithinTheVisibleFrame()
    {
        m_windowSystem.composited = true;
        make(300);
        m_menuBarPanel->toggle(Point{400, 595});
        const QRect window = m_menuBarPanel->window()->geometry();
        QVERIFY(window.width() > 320);
        QCOMPARE(m_content->width(), 320);
        QVERIFY(window.top() >= 30);
        // A click on the shadow counts as one outside the menu bar panel.
        QTest::mouseClick(m_menuBarPanel->window(), Qt::LeftButton, {}, {1, window.height() - 1});
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void theWindowFollowsTheContentsHeight()
    {
        make(300);
        m_menuBarPanel->toggle(Point{400, 595});
        const int top = m_menuBarPanel->window()->y();
        const int before = m_menuBarPanel->window()->height();
        m_content->setContentHeight(400);
        QTRY_COMPARE(m_menuBarPanel->window()->height(), before + 100);
        QCOMPARE(m_menuBarPanel->window()->y(), top);
        m_content->setContentHeight(250);
        QTRY_COMPARE(m_menuBarPanel->window()->height(), before - 50);
    }

    void contentTooTallForTheScreenScrolls()
    {
        make(5000);
        m_menuBarPanel->toggle(Point{400, 595});
        const auto *scroll = m_menuBarPanel->window()->findChild<QScrollArea *>();
        QVERIFY(scroll->verticalScrollBar()->maximum() > 0);
        QCOMPARE(m_content->width(), 320);
        QVERIFY(scroll->viewport()->width() >= 320);
        QVERIFY(m_menuBarPanel->window()->height() <
                QGuiApplication::primaryScreen()->geometry().height() - 30);
    }

    void escapeClosesIt()
    {
        make();
        openWithFocus();
        m_content->m_button->setFocus();
        QTest::keyClick(m_content->m_button, Qt::Key_Escape);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void aSecondClickOnTheBellClosesIt()
    {
        make();
        openWithFocus();
        m_menuBarPanel->toggle(Point{700, 890});
        QVERIFY(!m_menuBarPanel->isOpen());
        m_menuBarPanel->toggle(Point{700, 890});
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void aClickElsewhereClosesIt()
    {
        make();
        openWithFocus();
        QSignalSpy closings(m_menuBarPanel.get(), &MenuBarPanel::closed);
        const auto other = otherWindow();
        QTRY_VERIFY(!m_menuBarPanel->isOpen());
        QCOMPARE(closings.size(), 1);
    }

    void theBellClickThatTakesTheFocusDoesNotReopenIt()
    {
        make();
        openWithFocus();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_menuBarPanel->isOpen());
        m_clock->advance(Seconds{0.4});
        m_menuBarPanel->toggle(Point{700, 890});
        QVERIFY(!m_menuBarPanel->isOpen());
        // The next click counts separately, however soon it comes.
        m_menuBarPanel->toggle(Point{700, 890});
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void aBellClickLongAfterAnotherWindowTookTheFocusOpensIt()
    {
        make();
        openWithFocus();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_menuBarPanel->isOpen());
        m_clock->advance(MenuBarPanel::sameClick);
        m_menuBarPanel->toggle(Point{700, 890});
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void itStaysOpenBesideAWindowThatItOpened()
    {
        make();
        openWithFocus();
        m_menuBarPanel->stayOpenBesideWindows();
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        QVERIFY(m_menuBarPanel->isOpen());
        // It still works.
        m_menuBarPanel->window()->activateWindow();
        QTRY_VERIFY(m_menuBarPanel->window()->isActiveWindow());
        QSignalSpy clicks(m_content->m_button, &QAbstractButton::clicked);
        QTest::mouseClick(m_content->m_button, Qt::LeftButton);
        QCOMPARE(clicks.size(), 1);
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void besideAWindowItClosesWhenAnotherProgramTakesTheFocus()
    {
        make();
        openWithFocus();
        m_menuBarPanel->stayOpenBesideWindows();
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void besideAWindowThatTookTheFocusFirstItStillCloses()
    {
        make();
        const auto other = otherWindow();
        m_menuBarPanel->open(Point{700, 890});
        m_menuBarPanel->stayOpenBesideWindows();
        Q_EMIT qGuiApp->focusWindowChanged(other->windowHandle());
        QVERIFY(m_menuBarPanel->isOpen());
        Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        QVERIFY(!m_menuBarPanel->isOpen());
    }

    void openingByItselfDoesNotTakeTheFocus()
    {
        make();
        m_menuBarPanel->openAsWindow({}, MenuBarPanel::OpenedBy::program);
        QVERIFY(m_menuBarPanel->openedByItself());
        QVERIFY(m_menuBarPanel->window()->testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(m_windowSystem.broughtToFront.isEmpty());
        // Opened by the user, it comes to the front.
        m_menuBarPanel->openAsWindow({});
        QVERIFY(!m_menuBarPanel->openedByItself());
        QCOMPARE(m_windowSystem.broughtToFront.size(), 1);
    }

    void stayingOpenDoesNotApplyToTheNextOpening()
    {
        make();
        openWithFocus();
        m_menuBarPanel->stayOpenBesideWindows();
        m_menuBarPanel->close();
        openWithFocus();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_menuBarPanel->isOpen());
    }

    void itsOwnDialogDoesNotCloseIt()
    {
        make();
        openWithFocus();
        QWidget dialog(m_menuBarPanel->window(), Qt::Dialog);
        dialog.show();
        dialog.activateWindow();
        QTRY_VERIFY(dialog.isActiveWindow());
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void asAnOrdinaryWindowItHasAFrameATitleAndStaysOpen()
    {
        make();
        m_menuBarPanel->openAsWindow({});
        QCOMPARE(m_menuBarPanel->window()->windowFlags() & Qt::WindowType_Mask, Qt::Window);
        QVERIFY(!m_menuBarPanel->window()->windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(m_menuBarPanel->window()->windowTitle(), u"Quillet"_s);
        m_menuBarPanel->window()->activateWindow();
        QTRY_VERIFY(m_menuBarPanel->window()->isActiveWindow());
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        QVERIFY(m_menuBarPanel->isOpen());
        m_menuBarPanel->window()->close();
        QVERIFY(!m_menuBarPanel->isOpen());
        QTRY_VERIFY(m_content.isNull());
    }

    void openingItAgainBringsItToTheFront()
    {
        make();
        m_menuBarPanel->openAsWindow({});
        m_menuBarPanel->openAsWindow({});
        m_menuBarPanel->open(std::nullopt);
        QCOMPARE(m_made, 1);
        QCOMPARE(m_windowSystem.broughtToFront.size(), 3);
    }

    void aButtonInItMayCloseIt()
    {
        make();
        openWithFocus();
        connect(m_content->m_button, &QAbstractButton::clicked, m_menuBarPanel.get(), &MenuBarPanel::close);
        QTest::mouseClick(m_content->m_button, Qt::LeftButton);
        QVERIFY(!m_menuBarPanel->isOpen());
        QTRY_VERIFY(m_content.isNull());
    }

    void itIsDestroyedWithItsOwner()
    {
        make();
        openWithFocus();
        m_menuBarPanel.reset();
        QVERIFY(m_content.isNull());
    }
};

QUILLET_TEST(MenuBarPanelTest, runViewTest<MenuBarPanelTest>);

#include "MenuBarPanelTest.moc"
