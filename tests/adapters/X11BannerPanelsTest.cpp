// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Platform/Linux/X11/X11Screens.h"
#include "Corvane/Views/FloatingBannerView.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/support/TestDesktop.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QToolTip>

using namespace corvane;
using namespace Qt::StringLiterals;
using WindowManager = TestDesktop::WindowManager;

namespace {

constexpr QSize desktopSize(1280, 800);
constexpr Rect home{140, 260, 1000, 280};
/// Points of the desktop, y downwards, with the card at home: its left part, where nothing is drawn on it;
/// its close button; just inside its upper left corner's rectangle, outside its rounding; its shadow's
/// margin.
constexpr QPoint onTheCard(170, 400);
constexpr QPoint onTheCloseButton(1140 - 41, 260 + 41);
constexpr QPoint inTheCorner(141, 261);
constexpr QPoint onTheMargin(640, 260 + 280 + 20);
constexpr QPoint farAway(30, 30);

TeachingAction startNow()
{
    const Lesson lesson{.id = QUuid::createUuid(),
                        .studentName = u"Anna"_s,
                        .platform = TeachingPlatform::zoom,
                        .startTime = currentDate(),
                        .duration = Seconds{1500},
                        .profile = PlatformProfile::defaults().at(TeachingPlatform::zoom)};
    return {.state = LessonState::startNow,
            .lesson = lesson,
            .nextLesson = lesson,
            .message = u"Start now"_s,
            .priority = TeachingActionPriority::urgent,
            .effectiveDate = currentDate(),
            .nextTransitionDate = std::nullopt};
}

QColor pixel(QPoint at)
{
    return QGuiApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1).toImage().pixelColor(0, 0);
}

bool isDark(QPoint at)
{
    return pixel(at).lightness() < 40;
}

const QColor opponentColor(u"#a0c0e0"_s);

quint32 activeWindow()
{
    const auto window = x11::property(x11::rootWindow(), "_NET_ACTIVE_WINDOW");
    return window.empty() ? 0 : window.front();
}

void click(QPoint at)
{
    TestDesktop::xdotool(
        {u"mousemove"_s, QString::number(at.x()), QString::number(at.y()), u"click"_s, u"1"_s});
}

/// All that the opponent has said so far.
class Listener {
public:
    explicit Listener(QProcess &process) : m_process(process) {}
    QString heard()
    {
        m_heard += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_heard;
    }

private:
    QProcess &m_process;
    QString m_heard;
};

} // namespace

class X11BannerPanelsTest final : public QObject {
    Q_OBJECT

public:
    explicit X11BannerPanelsTest(TestDesktop &desktop) : m_desktop(desktop) {}

private:
    [[nodiscard]] static std::unique_ptr<X11BannerPanels> makePanels()
    {
        return std::make_unique<X11BannerPanels>(
            [](const TeachingAction &action, std::function<void()> onDismiss) {
                return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
            },
            CardShape{look::banner::cornerRadius, look::banner::shadowBlur, look::banner::shadowOpacity});
    }

    [[nodiscard]] std::shared_ptr<BannerPanel> present(std::function<void()> onDismiss = [] {})
    {
        auto panel = m_panels->makePanel(home, {}, startNow(), std::move(onDismiss));
        panel->setFrame(home.scaledAboutCentre(0.95));
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        panel->animate({.duration = Seconds{0.22}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home},
                       {});
        return panel;
    }

    void manage(WindowManager manager)
    {
        m_desktop.startWindowManager(manager);
        QVERIFY(isManagerServing());
        QTRY_COMPARE_WITH_TIMEOUT(x11::isComposited(), manager == WindowManager::xfwm4WithCompositing,
                                  20'000);
    }

    void oppose(const QStringList &arguments = {})
    {
        m_opponent = m_desktop.startOpponent(arguments);
        m_listener = std::make_unique<Listener>(*m_opponent);
        QTRY_VERIFY_WITH_TIMEOUT(m_listener->heard().contains(u"ready"_s), 20'000);
        QTRY_COMPARE_WITH_TIMEOUT(pixel(onTheCard), opponentColor, 20'000);
    }

    TestDesktop &m_desktop;
    std::unique_ptr<X11BannerPanels> m_panels;
    std::unique_ptr<QProcess> m_opponent;
    std::unique_ptr<Listener> m_listener;

    static void addManagers()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::newRow("openbox") << WindowManager::openbox;
        QTest::newRow("xfwm4") << WindowManager::xfwm4;
        QTest::newRow("xfwm4, compositing") << WindowManager::xfwm4WithCompositing;
    }

private Q_SLOTS:
    void cleanupTestCase()
    {
        // The ticks and animations of panels that are gone end at their next turn; one that begins now ends
        // after them.
        QCoro::waitFor(wait(Seconds{1.1}));
    }

    void init() { m_panels = makePanels(); }

    void cleanup()
    {
        m_panels.reset();
        if (m_opponent) {
            m_opponent->terminate();
            QVERIFY(m_opponent->state() == QProcess::NotRunning || m_opponent->waitForFinished());
            m_opponent.reset();
        }
        m_desktop.stopWindowManager();
    }

    void aBannerStandsAboveAFullScreenProgram_data()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::addColumn<QStringList>("opponent");
        const QList<QStringList> opponents{
            {}, {u"--above"_s}, {u"--raise"_s}, {u"--above"_s, u"--raise"_s}, {u"--activate"_s}};
        for (const auto &[name, manager] :
             {std::pair{"openbox", WindowManager::openbox}, std::pair{"xfwm4", WindowManager::xfwm4},
              std::pair{"xfwm4, compositing", WindowManager::xfwm4WithCompositing}}) {
            for (const QStringList &opponent : opponents) {
                QTest::addRow("%s %s", name, qPrintable(opponent.join(u' '))) << manager << opponent;
            }
        }
    }

    void aBannerStandsAboveAFullScreenProgram()
    {
        QFETCH(WindowManager, manager);
        QFETCH(QStringList, opponent);
        manage(manager);
        oppose(opponent);
        const quint32 active = activeWindow();
        QVERIFY(active != 0);

        bool isDismissed = false;
        const auto panel = present([&] { isDismissed = true; });
        QTRY_VERIFY(isDark(onTheCard));
        // Long enough for a restless opponent to raise itself several times.
        constexpr int severalTurns = 1000;
        QVERIFY(
            !QTest::qWaitFor([&] { return !isDark(onTheCard) || activeWindow() != active; }, severalTurns));
        click(onTheCloseButton);
        QTRY_VERIFY(isDismissed);
        QCOMPARE(activeWindow(), active);
    }

    void theKeysStayWithTheOpponent_data() { addManagers(); }

    void theKeysStayWithTheOpponent()
    {
        QFETCH(WindowManager, manager);
        manage(manager);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        click(onTheCard);
        TestDesktop::xdotool({u"key"_s, u"a"_s});
        QTRY_VERIFY(m_listener->heard().contains(u"key 65"_s));
        QVERIFY(!m_listener->heard().contains(u"click"_s));
        QCOMPARE(QGuiApplication::focusWindow(), nullptr);
    }

    void theCloseButtonSaysOnHoveringWhatItDoes()
    {
        manage(WindowManager::openbox);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(panel->frame() == home);
        for (const QPoint at : {farAway, onTheCloseButton, onTheCloseButton + QPoint(1, 1)}) {
            TestDesktop::xdotool({u"mousemove"_s, QString::number(at.x()), QString::number(at.y())});
            QCoreApplication::processEvents();
        }
        QTRY_VERIFY(QToolTip::isVisible());
        QCOMPARE(QToolTip::text(), u"Close reminder"_s);
        QCOMPARE(QGuiApplication::focusWindow(), nullptr);
        TestDesktop::xdotool({u"mousemove"_s, u"30"_s, u"30"_s});
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void aClickOnTheMarginFallsThrough()
    {
        manage(WindowManager::xfwm4WithCompositing);
        oppose();
        bool isDismissed = false;
        const auto panel = present([&] { isDismissed = true; });
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(onTheMargin).lightness() < opponentColor.lightness()); // the shadow lies there
        for (const QPoint at : {onTheMargin, inTheCorner}) {
            click(at);
            QTRY_VERIFY(m_listener->heard().contains(u"click %1 %2\n"_s.arg(at.x()).arg(at.y())));
        }
        QVERIFY(!isDismissed);
    }

    void withoutACompositingManagerTheCornersAreCutOff_data()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::newRow("openbox") << WindowManager::openbox;
        QTest::newRow("xfwm4") << WindowManager::xfwm4;
    }

    void withoutACompositingManagerTheCornersAreCutOff()
    {
        QFETCH(WindowManager, manager);
        manage(manager);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(panel->frame() == home);
        QVERIFY(isDark(QPoint(640, 262))); // the upper edge, beyond the rounding
        QCOMPARE(pixel(inTheCorner), opponentColor);
        QCOMPARE(pixel(onTheMargin), opponentColor);
        click(inTheCorner);
        QTRY_VERIFY(m_listener->heard().contains(u"click 141 261\n"_s));
    }

    void aBannerFadesOutAndIsGone_data() { addManagers(); }

    void aBannerFadesOutAndIsGone()
    {
        QFETCH(WindowManager, manager);
        manage(manager);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(panel->frame() == home);
        panel->animate({.duration = Seconds{0.24},
                        .curve = TimingCurve::easeIn,
                        .alpha = 0,
                        .frame = home.scaledAboutCentre(0.97)},
                       [&] { panel->close(); });
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
        QTRY_COMPARE(pixel(onTheMargin), opponentColor);
    }

    void aClosedBannerIsGoneAtOnce()
    {
        manage(WindowManager::xfwm4WithCompositing);
        oppose();
        auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        panel->close();
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
    }

    void aBannerIsOnEveryWorkspace_data() { addManagers(); }

    void aBannerIsOnEveryWorkspace()
    {
        QFETCH(WindowManager, manager);
        manage(manager);
        oppose();
        const auto rootProperty = [](const char *name) { return x11::property(x11::rootWindow(), name); };
        using Values = std::vector<std::uint32_t>;
        TestDesktop::xdotool({u"set_num_desktops"_s, u"2"_s});
        QTRY_COMPARE(rootProperty("_NET_NUMBER_OF_DESKTOPS"), Values{2});
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        TestDesktop::xdotool({u"set_desktop"_s, u"1"_s});
        QTRY_COMPARE(rootProperty("_NET_CURRENT_DESKTOP"), Values{1});
        QTRY_VERIFY(pixel(farAway) != opponentColor); // the opponent stayed behind
        QTRY_VERIFY(pixel(onTheCloseButton).lightness() > 200);
        TestDesktop::xdotool({u"set_desktop"_s, u"0"_s});
        QTRY_COMPARE(pixel(farAway), opponentColor);
    }

    void aBannerFollowsACompositingManagerThatComesAndGoes()
    {
        manage(WindowManager::xfwm4);
        oppose();
        auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QCOMPARE(pixel(onTheMargin), opponentColor);
        panel->close();

        manage(WindowManager::xfwm4WithCompositing);
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
        panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(onTheMargin).lightness() < opponentColor.lightness());
        panel->close();

        manage(WindowManager::xfwm4);
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
        panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QCOMPARE(pixel(onTheMargin), opponentColor);
    }

    void aLockedSessionHidesTheBannerAndUnlockingBringsItBack_data() { addManagers(); }

    void aLockedSessionHidesTheBannerAndUnlockingBringsItBack()
    {
        QFETCH(WindowManager, manager);
        manage(manager);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        m_panels->setSessionLocked(true);
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
        QVERIFY(panel->frame() == home || panel->frame().width < home.width);
        m_panels->setSessionLocked(false);
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(inTheCorner).lightness() > 100); // cut or shaded as before
    }

    void animationsGoOnWhileTheSessionIsLocked()
    {
        manage(WindowManager::openbox);
        oppose();
        m_panels->setSessionLocked(true);
        const auto panel = present();
        bool isDone = false;
        QTRY_VERIFY(panel->frame() == home);
        panel->animate({.duration = Seconds{0.05}, .curve = TimingCurve::easeIn, .alpha = 1, .frame = home},
                       [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        QCOMPARE(pixel(onTheCard), opponentColor);
        m_panels->setSessionLocked(false);
        QTRY_VERIFY(isDark(onTheCard));
    }

    void aBannerThatIsClosedWhileTheSessionIsLockedStaysAway()
    {
        manage(WindowManager::openbox);
        oppose();
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        m_panels->setSessionLocked(true);
        QTRY_COMPARE(pixel(onTheCard), opponentColor);
        panel->close();
        const auto later = m_panels->makePanel(home, {}, startNow(), {}); // never ordered to the front
        m_panels->setSessionLocked(false);
        QCoreApplication::processEvents();
        TestDesktop::xdotool({u"mousemove"_s, u"5"_s, u"5"_s}); // a round trip: what was mapped would show
        QCOMPARE(pixel(onTheCard), opponentColor);
    }

    void aStrutOfAPanelIsNoPartOfTheVisibleScreen()
    {
        manage(WindowManager::openbox);
        X11Screens screens;
        QCOMPARE(screens.screens().size(), std::size_t{1});
        const Rect frame = screens.screens().front().frame;
        QVERIFY((frame == Rect{0, 0, 1280, 800}));
        QVERIFY(screens.screens().front().visibleFrame == frame);
    }

    void thePointerIsToldWithYUpwards()
    {
        X11Screens screens;
        TestDesktop::xdotool({u"mousemove"_s, u"100"_s, u"0"_s});
        QVERIFY((screens.pointerLocation() == Point{100.5, 799.5}));
        QVERIFY(screens.screens().front().frame.contains(screens.pointerLocation()));
        TestDesktop::xdotool({u"mousemove"_s, u"1279"_s, u"799"_s});
        QVERIFY((screens.pointerLocation() == Point{1279.5, 0.5}));
        QVERIFY(screens.screens().front().frame.contains(screens.pointerLocation()));
    }

    void theKeyWindowsScreenIsKnown()
    {
        manage(WindowManager::openbox);
        oppose(); // a manager that has shown one window shows the next
        m_opponent->terminate();
        QVERIFY(m_opponent->waitForFinished());
        X11Screens screens;
        QWidget window;
        window.setGeometry(400, 300, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        click(window.mapToGlobal(QPoint(150, 100))); // whatever the manager thinks of new windows
        QTRY_VERIFY(screens.keyWindowScreen().has_value());
        QVERIFY(screens.keyWindowScreen() == screens.mainScreen());
        window.hide();
        QTRY_VERIFY(!screens.keyWindowScreen().has_value());
    }

    void aBannerIsNoKeyWindow()
    {
        manage(WindowManager::openbox);
        const auto panel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QVERIFY(!X11Screens().keyWindowScreen().has_value());
    }
};

int main(int argc, char *argv[])
{
    TestDesktop desktop(desktopSize);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11BannerPanelsTest test(desktop);
    return QTest::qExec(&test, argc, argv);
}

#include "X11BannerPanelsTest.moc"
