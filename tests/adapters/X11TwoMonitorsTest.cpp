// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Look.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Views/FloatingBannerView.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/contracts/WidgetScreensContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QScreen>
#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int monitorWidth = 2048; // in pixels
constexpr int monitorHeight = 1536;

TeachingAction startNow()
{
    TeachingAction action;
    action.state = LessonState::startNow;
    action.effectiveDate = currentDate();
    return action;
}

} // namespace

/// Two monitors side by side, at a scale factor of one or two.
class X11TwoMonitorsTest final : public QObject {
    Q_OBJECT

public:
    X11TwoMonitorsTest(TestDesktop &desktop, int scaleFactor) : m_desktop(desktop), m_scaleFactor(scaleFactor)
    {
    }

private:
    [[nodiscard]] double width() const { return double{monitorWidth} / m_scaleFactor; }
    [[nodiscard]] double height() const { return double{monitorHeight} / m_scaleFactor; }

    /// The colour at a place in points from the upper left corner of a screen.
    [[nodiscard]] static QColor color(qsizetype screen, QPoint at)
    {
        return QGuiApplication::screens()
            .at(screen)
            ->grabWindow(0, at.x(), at.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    }

    TestDesktop &m_desktop;
    int m_scaleFactor;
    ToolkitScreens m_screens;
    X11BannerPanels m_bannerPanels{
        [](const TeachingAction &action, std::function<void()> onDismiss) {
            return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
        },
        {look::banner::cornerRadius, look::banner::shadowBlur, look::banner::shadowOpacity}};

private Q_SLOTS:
    void cleanupTestCase()
    {
        // Wait longer than a tick and any animation, so that those of destroyed banner panels have ended.
        QCoro::waitFor(wait(Seconds{1.1}));
    }

    void initTestCase()
    {
        m_desktop.startWindowManager(TestDesktop::WindowManager::openbox);
        QVERIFY(isManagerServing());
        QCOMPARE(QGuiApplication::screens().size(), 2);
    }

    void bothScreensAreReported()
    {
        const auto screens = m_screens.screens();
        QCOMPARE(screens.size(), std::size_t{2});
        QVERIFY((screens[0].frame == Rect{0, 0, width(), height()}));
        QVERIFY((screens[1].frame == Rect{monitorWidth, 0, width(), height()}));
        QVERIFY(m_screens.mainScreen() == screens[0]);
    }

    void thePointersPositionIsOnItsScreen()
    {
        const auto screens = m_screens.screens();
        for (const auto &[at, on] : {std::pair{QPoint(0, 0), std::size_t{0}},
                                     {QPoint(monitorWidth - 1, monitorHeight - 1), 0},
                                     {QPoint(monitorWidth, 0), 1},
                                     {QPoint(2 * monitorWidth - 1, monitorHeight - 1), 1}}) {
            TestDesktop::xdotool({u"mousemove"_s, QString::number(at.x()), QString::number(at.y())});
            const Point pointer = m_screens.pointerLocation();
            for (std::size_t i = 0; i < screens.size(); ++i) {
                QCOMPARE(screens[i].frame.contains(pointer), i == on);
            }
        }
    }

    void aBannerIsDrawnAtItsFrame_data()
    {
        QTest::addColumn<int>("screen");
        QTest::newRow("first") << 0;
        QTest::newRow("second") << 1;
    }

    void aBannerIsDrawnAtItsFrame()
    {
        QFETCH(int, screen);
        const Rect visible = m_screens.screens()[static_cast<std::size_t>(screen)].visibleFrame;
        const Rect home{visible.minX() + 12, visible.maxY() - 280 - 48, 1000, 280};
        const auto bannerPanel = m_bannerPanels.makeBannerPanel(home, {}, startNow(), {});
        bannerPanel->orderFrontRegardless();
        // In the upper left part of the icon's background, relative to the screen's corner.
        const QPoint onTheIcon(12 + look::banner::leadingPadding + 30,
                               48 + (280 - look::banner::iconArea) / 2 + 10);
        QTRY_VERIFY(color(screen, onTheIcon).red() > 200 && color(screen, onTheIcon).green() < 80);
        QVERIFY(color(1 - screen, onTheIcon).red() < 80);
        // The card's first and last row of pixels.
        QTRY_VERIFY(color(screen, QPoint(12 + 500, 48)).red() > 10);
        QVERIFY(color(screen, QPoint(12 + 500, 48 + 279)).red() > 10);
    }

    void aDockOnOneMonitorDoesNotAffectTheOther()
    {
        QWidget dock;
        dock.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        dock.setGeometry(monitorWidth, 0, 200, 30);
        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));
        constexpr int thickness = 60; // pixels
        TestDesktop::run(
            u"xprop"_s,
            {u"-id"_s, QString::number(dock.winId()), u"-f"_s, u"_NET_WM_STRUT_PARTIAL"_s, u"32c"_s,
             u"-set"_s, u"_NET_WM_STRUT_PARTIAL"_s,
             u"0,0,%1,0,0,0,0,0,%2,%3,0,0"_s.arg(thickness).arg(monitorWidth).arg(2 * monitorWidth - 1)});
        const Rect second{monitorWidth, 0, width(), height() - double{thickness} / m_scaleFactor};
        QTRY_VERIFY(m_screens.screens()[1].visibleFrame == second);
        QVERIFY((m_screens.screens()[0].visibleFrame == Rect{0, 0, width(), height()}));
        dock.hide();
        QTRY_VERIFY(m_screens.screens()[1].visibleFrame == m_screens.screens()[1].frame);
    }

    void theKeyWindowsScreenIsTheOneItIsOn()
    {
        QWidget window;
        window.setGeometry(monitorWidth + 50, 50, 200, 100);
        window.show();
        window.activateWindow();
        QTRY_VERIFY(m_screens.keyWindowScreen().has_value());
        QVERIFY(m_screens.keyWindowScreen() == m_screens.screens()[1]);
    }
};

/// The Screens contract with two screens; the key window is on the second.
class TwoScreensContractTest final : public WidgetScreensContract {
    Q_OBJECT

protected:
    Screens &screens() override { return m_screens; }
    QRect place() const override { return {monitorWidth + 50, 50, 200, 100}; }

private:
    ToolkitScreens m_screens;
};

/// Runs at a scale factor of one or, with "--twice", of two.
static int runX11TwoMonitors(int argc, char *argv[])
{
    const bool isTwice = takeOption("--twice", argc, argv);
    if (isTwice) {
        qputenv("QT_SCALE_FACTOR", "2");
    }
    TestDesktop desktop{TestDesktop::TwoMonitors{}};
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11TwoMonitorsTest test(desktop, isTwice ? 2 : 1);
    TwoScreensContractTest contract;
    return QTest::qExec(&test, argc, argv) + QTest::qExec(&contract, argc, argv);
}

QUILLET_TEST(X11TwoMonitorsTest, runX11TwoMonitors);

#include "X11TwoMonitorsTest.moc"
