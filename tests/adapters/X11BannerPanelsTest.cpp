// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/contracts/ShownBannersContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QToolTip>

#include <array>

using namespace corvane;
using namespace Qt::StringLiterals;
using WindowManager = TestDesktop::WindowManager;

namespace {

constexpr QSize desktopSize(1280, 800);

/// Runs a test of shown banners on X11 under each window manager.
template <typename Test>
class OnX11 : public Test {
public:
    explicit OnX11(TestDesktop &desktop) : m_desktop(desktop) {}

protected:
    std::unique_ptr<CardBannerPanels> makeBannerPanels(CardBannerPanels::ContentFactory makeContent,
                                                       const CardShape &shape) override
    {
        return std::make_unique<X11BannerPanels>(std::move(makeContent), shape);
    }

    [[nodiscard]] QStringList surroundings() const override
    {
        return {u"openbox"_s, u"xfwm4"_s, u"xfwm4, compositing"_s};
    }

    [[nodiscard]] QStringList compositedSurroundings() const override { return {u"xfwm4, compositing"_s}; }

    void enterSurroundings(const QString &name) override
    {
        constexpr std::array managers{WindowManager::openbox, WindowManager::xfwm4,
                                      WindowManager::xfwm4WithCompositing};
        manage(managers.at(static_cast<std::size_t>(surroundings().indexOf(name))));
    }

    void leaveSurroundings() override { m_desktop.stopWindowManager(); }

    std::unique_ptr<QProcess> startOpponent(const QStringList &arguments) override
    {
        return m_desktop.startOpponent(arguments);
    }

    void manage(WindowManager manager)
    {
        m_desktop.startWindowManager(manager);
        QVERIFY(isManagerServing());
        QTRY_COMPARE_WITH_TIMEOUT(x11::isComposited(), manager == WindowManager::xfwm4WithCompositing,
                                  20'000);
    }

    [[nodiscard]] TestDesktop &desktop() { return m_desktop; }

private:
    TestDesktop &m_desktop;
};

} // namespace

class X11ShownBannersContractTest final : public OnX11<ShownBannersContract> {
    Q_OBJECT

public:
    using OnX11::OnX11;
};

class X11BannerPanelsTest final : public OnX11<ShownBannersFixture> {
    Q_OBJECT

public:
    using OnX11::OnX11;

private:
    static void addManagers()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::newRow("openbox") << WindowManager::openbox;
        QTest::newRow("xfwm4") << WindowManager::xfwm4;
        QTest::newRow("xfwm4, compositing") << WindowManager::xfwm4WithCompositing;
    }

private Q_SLOTS:
    void aBannerStaysAboveAFullScreenProgram_data()
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

    void aBannerStaysAboveAFullScreenProgram()
    {
        QFETCH(WindowManager, manager);
        QFETCH(QStringList, opponent);
        manage(manager);
        oppose(opponent);
        const quint32 active = activeWindow();
        QVERIFY(active != 0);

        bool isDismissed = false;
        const auto bannerPanel = present([&] { isDismissed = true; });
        QTRY_VERIFY(isDark(onTheCard));
        // Long enough for a restless opponent to raise itself several times.
        constexpr int severalTurns = 1000;
        QVERIFY(
            !QTest::qWaitFor([&] { return !isDark(onTheCard) || activeWindow() != active; }, severalTurns));
        click(onTheCloseButton);
        QTRY_VERIFY(isDismissed);
        QCOMPARE(activeWindow(), active);
    }

    void theCloseButtonHasAToolTip()
    {
        manage(WindowManager::openbox);
        oppose();
        const auto bannerPanel = present();
        QTRY_VERIFY(bannerPanel->frame() == home);
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
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(bannerPanel->frame() == home);
        QVERIFY(isDark(QPoint(640, 262))); // the upper edge, away from the rounded corners
        QCOMPARE(pixel(inTheCorner), opponentColor());
        QCOMPARE(pixel(onTheMargin), opponentColor());
        click(inTheCorner);
        QTRY_VERIFY(heard().contains(u"click 141 261\n"_s));
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
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        TestDesktop::xdotool({u"set_desktop"_s, u"1"_s});
        QTRY_COMPARE(rootProperty("_NET_CURRENT_DESKTOP"), Values{1});
        QTRY_VERIFY(pixel(farAway) != opponentColor()); // the opponent stays on the first workspace
        QTRY_VERIFY(pixel(onTheCloseButton).lightness() > 200);
        TestDesktop::xdotool({u"set_desktop"_s, u"0"_s});
        QTRY_COMPARE(pixel(farAway), opponentColor());
    }

    void bannersFollowTheStartAndEndOfCompositing()
    {
        manage(WindowManager::xfwm4);
        oppose();
        auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QCOMPARE(pixel(onTheMargin), opponentColor());
        bannerPanel->close();

        manage(WindowManager::xfwm4WithCompositing);
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
        bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(onTheMargin).lightness() < opponentColor().lightness());
        bannerPanel->close();

        manage(WindowManager::xfwm4);
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
        bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QCOMPARE(pixel(onTheMargin), opponentColor());
    }

    void aScreenWithoutDocksIsWhollyVisible()
    {
        manage(WindowManager::openbox);
        ToolkitScreens screens;
        QCOMPARE(screens.screens().size(), std::size_t{1});
        const Rect frame = screens.screens().front().frame;
        QVERIFY((frame == Rect{0, 0, 1280, 800}));
        QVERIFY(screens.screens().front().visibleFrame == frame);
    }

    void thePointersPositionHasYUpwards()
    {
        ToolkitScreens screens;
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
        oppose(); // once a manager has shown one window, it shows the next
        endOpponent();
        ToolkitScreens screens;
        QWidget window;
        window.setGeometry(400, 300, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        click(window.mapToGlobal(QPoint(150, 100))); // managers may give new windows no focus
        QTRY_VERIFY(screens.keyWindowScreen().has_value());
        QVERIFY(screens.keyWindowScreen() == screens.mainScreen());
        window.hide();
        QTRY_VERIFY(!screens.keyWindowScreen().has_value());
    }

    void aBannerIsNoKeyWindow()
    {
        manage(WindowManager::openbox);
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QVERIFY(!ToolkitScreens().keyWindowScreen().has_value());
    }
};

template <typename Test>
static int run(int argc, char *argv[])
{
    TestDesktop desktop(desktopSize);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Test test(desktop);
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(X11BannerPanelsTest, run<X11BannerPanelsTest>);
QUILLET_TEST(X11ShownBannersContractTest, run<X11ShownBannersContractTest>);

#include "X11BannerPanelsTest.moc"
