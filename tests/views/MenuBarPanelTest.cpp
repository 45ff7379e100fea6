// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/PanelPlacement.h"

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

/// Stands for the real content: 320 points wide, as high as it is told.
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
    std::unique_ptr<MenuBarPanel> m_panel;
    QPointer<Content> m_content;
    int m_made = 0;

    void make(int height = 300)
    {
        m_panel = std::make_unique<MenuBarPanel>(
            [this, height] {
                ++m_made;
                auto content = std::make_unique<Content>(height);
                m_content = content.get();
                return content;
            },
            m_screens, m_windowSystem);
    }

    void openWithKeyboard(std::optional<Point> item = Point{700, 890})
    {
        m_panel->toggle(item);
        QVERIFY(m_panel->isOpen());
        m_panel->window()->activateWindow();
        QTRY_VERIFY(m_panel->window()->isActiveWindow());
    }

    /// Another window of the program takes the keyboard.
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
        m_panel.reset();
        m_clock.reset();
    }

    void theContentIsMadeWhenThePanelOpensAndDestroyedWhenItCloses()
    {
        make();
        QCOMPARE(m_made, 0);
        m_panel->toggle(Point{700, 790});
        QCOMPARE(m_made, 1);
        QVERIFY(m_content->isVisible());
        m_panel->close();
        QVERIFY(!m_panel->isOpen());
        QTRY_VERIFY(m_content.isNull());
        m_panel->toggle(Point{700, 790});
        QCOMPARE(m_made, 2);
    }

    void theWindowIsAFocusableToolWithoutAFrame()
    {
        make();
        m_panel->toggle(Point{700, 790});
        const Qt::WindowFlags flags = m_panel->window()->windowFlags();
        QCOMPARE(flags & Qt::WindowType_Mask, Qt::Tool);
        QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
        QVERIFY(!flags.testFlag(Qt::WindowDoesNotAcceptFocus));
        QCOMPARE(m_windowSystem.keptOut, QList<WindowId>{m_panel->window()->winId()});
        QCOMPARE(m_windowSystem.broughtToFront, QList<WindowId>{m_panel->window()->winId()});
    }

    void theWindowIsAsLargeAsItsContentAndWhereItBelongs()
    {
        make(300);
        m_panel->toggle(Point{400, 595});
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const Rect expected = PanelPlacement::find({320, double(m_content->sizeHint().height())},
                                                   Point{400, 595}, m_screens.allScreens, *m_screens.main)
                                  .frame;
        QCOMPARE(m_panel->window()->geometry(),
                 QRect(int(expected.x), int(screen.height() - expected.maxY()), 320, int(expected.height)));
        QCOMPARE(m_content->width(), 320);
    }

    void withACompositorItHasAShadowWithinTheVisiblePart()
    {
        m_windowSystem.composited = true;
        make(300);
        m_panel->toggle(Point{400, 595});
        const QRect window = m_panel->window()->geometry();
        QVERIFY(window.width() > 320);
        QCOMPARE(m_content->width(), 320);
        QVERIFY(window.top() >= 30);
        // A press on the shadow is one beside the panel.
        QTest::mouseClick(m_panel->window(), Qt::LeftButton, {}, {1, window.height() - 1});
        QVERIFY(!m_panel->isOpen());
    }

    void aContentThatGrowsTakesTheWindowWithIt()
    {
        make(300);
        m_panel->toggle(Point{400, 595});
        const int top = m_panel->window()->y();
        const int before = m_panel->window()->height();
        m_content->setContentHeight(400);
        QTRY_COMPARE(m_panel->window()->height(), before + 100);
        QCOMPARE(m_panel->window()->y(), top);
        m_content->setContentHeight(250);
        QTRY_COMPARE(m_panel->window()->height(), before - 50);
    }

    void aContentTooHighForTheScreenScrolls()
    {
        make(5000);
        m_panel->toggle(Point{400, 595});
        const auto *scroll = m_panel->window()->findChild<QScrollArea *>();
        QVERIFY(scroll->verticalScrollBar()->maximum() > 0);
        QCOMPARE(m_content->width(), 320);
        QVERIFY(scroll->viewport()->width() >= 320);
        QVERIFY(m_panel->window()->height() < QGuiApplication::primaryScreen()->geometry().height() - 30);
    }

    void escapeClosesIt()
    {
        make();
        openWithKeyboard();
        m_content->m_button->setFocus();
        QTest::keyClick(m_content->m_button, Qt::Key_Escape);
        QVERIFY(!m_panel->isOpen());
    }

    void aSecondClickOnTheBellClosesIt()
    {
        make();
        openWithKeyboard();
        m_panel->toggle(Point{700, 890});
        QVERIFY(!m_panel->isOpen());
        m_panel->toggle(Point{700, 890});
        QVERIFY(m_panel->isOpen());
    }

    void aClickElsewhereClosesIt()
    {
        make();
        openWithKeyboard();
        QSignalSpy closings(m_panel.get(), &MenuBarPanel::closed);
        const auto other = otherWindow();
        QTRY_VERIFY(!m_panel->isOpen());
        QCOMPARE(closings.size(), 1);
    }

    void theClickOnTheBellThatTakesTheKeyboardDoesNotOpenItAgain()
    {
        make();
        openWithKeyboard();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_panel->isOpen());
        m_clock->advance(Seconds{0.4});
        m_panel->toggle(Point{700, 890});
        QVERIFY(!m_panel->isOpen());
        // The next click is one of its own, however soon.
        m_panel->toggle(Point{700, 890});
        QVERIFY(m_panel->isOpen());
    }

    void aClickOnTheBellLongAfterAnotherWindowTookTheKeyboardOpensIt()
    {
        make();
        openWithKeyboard();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_panel->isOpen());
        m_clock->advance(MenuBarPanel::sameClick);
        m_panel->toggle(Point{700, 890});
        QVERIFY(m_panel->isOpen());
    }

    void besideAWindowThatItOpenedItStays()
    {
        make();
        openWithKeyboard();
        m_panel->stayOpenBesideWindows();
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        QVERIFY(m_panel->isOpen());
        // It is as usable as before.
        m_panel->window()->activateWindow();
        QTRY_VERIFY(m_panel->window()->isActiveWindow());
        QSignalSpy clicks(m_content->m_button, &QAbstractButton::clicked);
        QTest::mouseClick(m_content->m_button, Qt::LeftButton);
        QCOMPARE(clicks.size(), 1);
        QVERIFY(m_panel->isOpen());
    }

    void besideAWindowItClosesWhenTheKeyboardGoesToAnotherProgram()
    {
        make();
        openWithKeyboard();
        m_panel->stayOpenBesideWindows();
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        QVERIFY(!m_panel->isOpen());
    }

    void besideAWindowThatTookTheKeyboardFirstItStillCloses()
    {
        make();
        const auto other = otherWindow();
        m_panel->open(Point{700, 890});
        m_panel->stayOpenBesideWindows();
        Q_EMIT qGuiApp->focusWindowChanged(other->windowHandle());
        QVERIFY(m_panel->isOpen());
        Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        QVERIFY(!m_panel->isOpen());
    }

    void whatOpensByItselfLeavesTheKeyboardWhereItIs()
    {
        make();
        m_panel->openAsWindow(MenuBarPanel::Wish::none);
        QVERIFY(m_panel->openedByItself());
        QVERIFY(m_panel->window()->testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(m_windowSystem.broughtToFront.isEmpty());
        // Asked for, it comes to the front like any other.
        m_panel->openAsWindow();
        QVERIFY(!m_panel->openedByItself());
        QCOMPARE(m_windowSystem.broughtToFront.size(), 1);
    }

    void theNextPanelDoesNotStay()
    {
        make();
        openWithKeyboard();
        m_panel->stayOpenBesideWindows();
        m_panel->close();
        openWithKeyboard();
        const auto other = otherWindow();
        QTRY_VERIFY(!m_panel->isOpen());
    }

    void aDialogOfThePanelsOwnDoesNotCloseIt()
    {
        make();
        openWithKeyboard();
        QWidget dialog(m_panel->window(), Qt::Dialog);
        dialog.show();
        dialog.activateWindow();
        QTRY_VERIFY(dialog.isActiveWindow());
        QVERIFY(m_panel->isOpen());
    }

    void asAnOrdinaryWindowItHasAFrameAndATitleAndStays()
    {
        make();
        m_panel->openAsWindow();
        QCOMPARE(m_panel->window()->windowFlags() & Qt::WindowType_Mask, Qt::Window);
        QVERIFY(!m_panel->window()->windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(m_panel->window()->windowTitle(), u"Quillet"_s);
        m_panel->window()->activateWindow();
        QTRY_VERIFY(m_panel->window()->isActiveWindow());
        const auto other = otherWindow();
        QTRY_VERIFY(other->isActiveWindow());
        QVERIFY(m_panel->isOpen());
        m_panel->window()->close();
        QVERIFY(!m_panel->isOpen());
        QTRY_VERIFY(m_content.isNull());
    }

    void openingAnOpenOneBringsItToTheFront()
    {
        make();
        m_panel->openAsWindow();
        m_panel->openAsWindow();
        m_panel->open(std::nullopt);
        QCOMPARE(m_made, 1);
        QCOMPARE(m_windowSystem.broughtToFront.size(), 3);
    }

    void aButtonInItMayCloseIt()
    {
        make();
        openWithKeyboard();
        connect(m_content->m_button, &QAbstractButton::clicked, m_panel.get(), &MenuBarPanel::close);
        QTest::mouseClick(m_content->m_button, Qt::LeftButton);
        QVERIFY(!m_panel->isOpen());
        QTRY_VERIFY(m_content.isNull());
    }

    void itGoesWithItsOwner()
    {
        make();
        openWithKeyboard();
        m_panel.reset();
        QVERIFY(m_content.isNull());
    }
};

QUILLET_TEST(MenuBarPanelTest, runViewTest<MenuBarPanelTest>);

#include "MenuBarPanelTest.moc"
