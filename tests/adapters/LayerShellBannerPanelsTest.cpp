// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/LayerShellBannerPanels.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Platform/Linux/Wayland/WaylandScreens.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Utilities/DebugLogService.h"
#include "tests/contracts/ShownBannersContract.h"
#include "tests/support/TestCompositor.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <csignal>
#include <xcb/xcb.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize monitor(1280, 800);

/// A card's content that records pointer events. It is of one colour, with a white line, half a point wide,
/// down the middle.
class Patch final : public QWidget {
public:
    Patch() { setMouseTracking(true); }

    void setColor(const QColor &color)
    {
        m_color = color;
        update();
    }
    [[nodiscard]] const QStringList &heard() const { return m_heard; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_color);
        painter.fillRect(QRectF(width() / 2.0, 0, 0.5, height()), Qt::white);
    }
    void enterEvent(QEnterEvent *) override { m_heard << u"enter"_s; }
    void leaveEvent(QEvent *) override { m_heard << u"leave"_s; }
    void mouseMoveEvent(QMouseEvent *event) override { hear(u"move"_s, *event); }
    void mousePressEvent(QMouseEvent *event) override { hear(u"press"_s, *event); }
    void mouseReleaseEvent(QMouseEvent *event) override { hear(u"release"_s, *event); }

private:
    void hear(const QString &what, const QMouseEvent &event)
    {
        const QPoint at = event.position().toPoint();
        m_heard << u"%1 %2 %3"_s.arg(what).arg(at.x()).arg(at.y());
    }

    QColor m_color = Qt::darkGreen;
    QStringList m_heard;
};

/// Asks the window's program to close it, as a window manager would.
void closeWindow(std::uint32_t window)
{
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = x11::atom("WM_PROTOCOLS");
    request.data.data32[0] = x11::atom("WM_DELETE_WINDOW");
    xcb_send_event(x11::connection(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(x11::connection());
}

} // namespace

/// Screenshots and input go through the X display around the compositor.
class LayerShellBannerPanelsTest final : public ShownBannersContract {
    Q_OBJECT

public:
    LayerShellBannerPanelsTest() { startCompositor(1); }

protected:
    std::unique_ptr<CardBannerPanels> makeBannerPanels(CardBannerPanels::ContentFactory makeContent,
                                                       const CardShape &shape) override
    {
        return std::make_unique<LayerShellBannerPanels>(m_connection, std::move(makeContent), shape,
                                                        *m_logger);
    }

    [[nodiscard]] QStringList surroundings() const override
    {
        return {u"a Wayland program"_s, u"an X11 program"_s};
    }
    [[nodiscard]] QStringList compositedSurroundings() const override { return surroundings(); }

    void enterSurroundings(const QString &name) override { m_isX11 = name == surroundings().last(); }
    void leaveSurroundings() override { m_isX11 = false; }

    std::unique_ptr<QProcess> startOpponent(const QStringList &arguments) override
    {
        QProcessEnvironment environment = m_compositor->environment();
        environment.insert(u"QT_QPA_PLATFORM"_s, m_isX11 ? u"xcb"_s : u"wayland"_s);
        return TestDesktop::startOpponent(arguments, environment);
    }

private:
    void startCompositor(int monitors)
    {
        m_compositor.reset();
        m_compositor = std::make_unique<TestCompositor>(monitor, monitors);
        m_compositor->enter();
    }

    /// The number in the name of the output on the right: 1 for X11-1, 2 for X11-2, 0 if there is none.
    [[nodiscard]] int outputOnTheRight() const
    {
        const QString told = m_compositor->execute({u"-r"_s, u"-t"_s, u"get_outputs"_s});
        const QJsonArray outputs = QJsonDocument::fromJson(told.toUtf8()).array();
        for (const auto &output : outputs) {
            if (output[u"rect"_s][u"x"_s].toInt() > 0) {
                return output[u"name"_s].toString().last(1).toInt();
            }
        }
        return 0;
    }

    /// Starts a compositor with two monitors side by side and returns the X window of the right one; 0 if
    /// it cannot be reached.
    std::uint32_t startTwoMonitors()
    {
        startCompositor(2);
        // Wait for the end of the connection to the previous compositor.
        if (!QTest::qWaitFor([this] { return !m_connection.isOpen(); }) || !m_connection.open()) {
            return 0;
        }
        // Without a window manager both of its windows are in the same place, the newer one on top. Only
        // some versions name them, and which of them shows the right half differs too.
        const QString told = TestDesktop::run(u"xwininfo"_s, {u"-root"_s, u"-children"_s});
        const QString size = u"%1x%2"_s.arg(monitor.width()).arg(monitor.height());
        const QRegularExpression line(u"(0x[0-9a-f]+) .* %1\\+0\\+0 "_s.arg(size));
        QStringList windows; // bottom to top
        for (auto match = line.globalMatch(told); match.hasNext();) {
            windows.prepend(match.next().captured(1));
        }
        const QString second = windows.value(outputOnTheRight() - 1);
        TestDesktop::xdotool({u"windowmove"_s, second, QString::number(monitor.width()), u"0"_s});
        return second.toUInt(nullptr, 0);
    }

    /// A banner panel that shows a patch at `at`, in desktop coordinates with y downwards. `height` is the
    /// desktop's.
    std::shared_ptr<BannerPanel> presentPatch(QRect at, int height = monitor.height())
    {
        LayerShellBannerPanels bannerPanels(
            m_connection,
            [&](const TeachingAction &, const std::function<void()> &) {
                auto content = std::make_unique<Patch>();
                content->setFixedSize(at.size());
                m_patch = content.get();
                return content;
            },
            {}, *m_logger);
        auto bannerPanel =
            bannerPanels.makeBannerPanel(Rect{double(at.x()), double(height - at.y() - at.height()),
                                              double(at.width()), double(at.height())},
                                         {}, startNow(), {});
        bannerPanel->orderFrontRegardless();
        return bannerPanel;
    }

    [[nodiscard]] bool hasLogged(const QString &text) const
    {
        return m_logger->latestLines().join(u'\n').contains(text);
    }

    std::unique_ptr<TestCompositor> m_compositor;
    WaylandConnection m_connection;
    QTemporaryDir m_folder;
    std::unique_ptr<DebugLogService> m_logger;
    bool m_isX11 = false;
    Patch *m_patch = nullptr; ///< of the most recent banner panel

private Q_SLOTS:
    void init()
    {
        m_logger = std::make_unique<DebugLogService>(m_folder.path());
        ShownBannersContract::init();
        QVERIFY(m_connection.open());
        QVERIFY(m_connection.offersOverlays());
    }

    void aBannerStaysAboveAFullScreenProgram_data() { addRows(surroundings()); }

    void aBannerStaysAboveAFullScreenProgram()
    {
        QFETCH(QString, name);
        enterSurroundings(name);
        oppose({u"--above"_s, u"--raise"_s, u"--activate"_s});
        bool isDismissed = false;
        const auto bannerPanel = present([&] { isDismissed = true; });
        QTRY_VERIFY(isDark(onTheCard));
        // Long enough for a restless opponent to raise itself several times.
        constexpr int severalTurns = 1000;
        QVERIFY(!QTest::qWaitFor([] { return !isDark(onTheCard); }, severalTurns));
        click(onTheCloseButton);
        QTRY_VERIFY(isDismissed);
        press(u"a"_s);
        QTRY_VERIFY(heard().contains(u"key 65"_s));
        QCOMPARE(m_logger->latestLines(), QStringList());
    }

    void aBannerIsRedrawnWhenItsContentChanges()
    {
        const auto bannerPanel = presentPatch({100, 200, 300, 100});
        constexpr QPoint inside(120, 250);
        QTRY_COMPARE(pixel(inside), QColor(Qt::darkGreen));
        for (const QColor color : {Qt::red, Qt::blue, Qt::yellow, Qt::cyan, Qt::magenta}) {
            m_patch->setColor(color);
            QTRY_COMPARE(pixel(inside), color);
        }
    }

    void theContentReceivesThePointerLikeAWindow()
    {
        point(farAway);
        const auto bannerPanel = presentPatch({100, 200, 300, 100});
        QTRY_COMPARE(pixel({120, 250}), QColor(Qt::darkGreen));
        QCOMPARE(m_patch->heard(), QStringList());
        point({130, 250});
        QTRY_VERIFY(m_patch->heard().contains(u"enter"_s));
        QVERIFY(m_patch->underMouse());
        point({140, 260});
        QTRY_VERIFY(m_patch->heard().contains(u"move 40 60"_s));
        TestDesktop::xdotool({u"mousedown"_s, u"1"_s});
        QTRY_COMPARE(m_patch->heard().last(), u"press 40 60"_s);
        // The pressed content keeps the pointer until the release, wherever that is.
        point({160, 600});
        QTRY_COMPARE(m_patch->heard().last(), u"move 60 400"_s);
        TestDesktop::xdotool({u"mouseup"_s, u"1"_s});
        QTRY_VERIFY(m_patch->heard().contains(u"release 60 400"_s));
        QTRY_COMPARE(m_patch->heard().last(), u"leave"_s);
        QVERIFY(!m_patch->underMouse());
    }

    void aBannerIsDrawnAtTheMonitorsScale()
    {
        const auto scale = [this](const QString &factor) {
            (void)m_compositor->execute({u"output"_s, u"*"_s, u"scale"_s, factor});
        };
        scale(u"2"_s);
        QTRY_COMPARE(m_connection.outputs().front().scale, 2);
        QTRY_COMPARE(m_connection.outputs().front().area, QRect(QPoint(), monitor / 2));
        const auto bannerPanel = presentPatch({100, 50, 300, 100}, monitor.height() / 2);
        QTRY_COMPARE(pixel({210, 150}), QColor(Qt::darkGreen));
        // The line of half a point is one pixel wide.
        QCOMPARE(pixel({499, 150}), QColor(Qt::darkGreen));
        QCOMPARE(pixel({500, 150}), QColor(Qt::white));
        QCOMPARE(pixel({501, 150}), QColor(Qt::darkGreen));
        // A change of scale takes effect while a banner is shown.
        scale(u"1"_s);
        QTRY_COMPARE(pixel({390, 100}), QColor(Qt::darkGreen));
    }

    void aBannerEndsWithItsCompositorAndTheNextCompositorShowsTheNext()
    {
        auto bannerPanel = present();
        QTRY_VERIFY(bannerPanel->frame() == home);
        m_compositor->end();
        QTRY_VERIFY(!m_connection.isOpen());
        QVERIFY(hasLogged(u"banner taken off the screen: the compositor has ended or refused it"_s));
        QVERIFY(WaylandScreens(m_connection).screens().empty());
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        bannerPanel->close();
        bannerPanel = present();
        QVERIFY(hasLogged(u"banner not shown: no compositor to show it"_s));
        QTRY_VERIFY(bannerPanel->frame() == home);
        bannerPanel->close();

        startCompositor(1);
        oppose();
        bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
    }

    void eachMonitorHasItsBanners()
    {
        const std::uint32_t second = startTwoMonitors();
        QVERIFY(second != 0);
        const WaylandScreens screens(m_connection);
        QCOMPARE(screens.screens().size(), std::size_t{2});
        QVERIFY((screens.screens()[0].frame == Rect{0, 0, 1280, 800}));
        QVERIFY((screens.screens()[1].frame == Rect{1280, 0, 1280, 800}));
        const auto first = presentPatch({100, 200, 300, 100});
        const auto other = presentPatch({1280 + 200, 400, 300, 100});
        QTRY_COMPARE(pixel({120, 250}), QColor(Qt::darkGreen));
        QTRY_COMPARE(pixel({1280 + 220, 450}), QColor(Qt::darkGreen));
        // A banner that moves to the other monitor appears there.
        other->setFrame({500, 300, 300, 100});
        QTRY_COMPARE(pixel({520, 450}), QColor(Qt::darkGreen));
        QTRY_VERIFY(pixel({1280 + 220, 450}) != QColor(Qt::darkGreen));
    }

    void thePointersMonitorIsTheOneThatTheCompositorFocuses()
    {
        QVERIFY(startTwoMonitors() != 0);
        const WaylandScreens screens(m_connection);
        for (const int left : {1280, 0, 1280}) {
            point({left + 300, 200});
            QTRY_VERIFY((screens.pointerLocation() == Point{left + 640.0, 400}));
        }
    }

    void aFullScreenProgramDoesNotHideWhichMonitorIsFocused()
    {
        QVERIFY(startTwoMonitors() != 0);
        const WaylandScreens screens(m_connection);
        point({300, 200});
        QTRY_VERIFY((screens.pointerLocation() == Point{640, 400}));
        oppose();
        QTRY_VERIFY((screens.pointerLocation() == Point{640, 400}));
    }

    void aCompositorThatHangsDelaysABannerOnlyBriefly()
    {
        QVERIFY(startTwoMonitors() != 0);
        const WaylandScreens screens(m_connection);
        point({1280 + 300, 200});
        QTRY_VERIFY((screens.pointerLocation() == Point{1280 + 640.0, 400}));
        m_compositor->signal(SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        const Point seen = screens.pointerLocation();
        const qint64 waited = timer.elapsed();
        m_compositor->signal(SIGCONT);
        QVERIFY2(waited < 1000, qPrintable(QString::number(waited)));
        QVERIFY((seen == Point{1280 + 300.5, 800 - 200.5})); // as the toolkit sees it
        QTRY_VERIFY((screens.pointerLocation() == Point{1280 + 640.0, 400}));
    }

    void aRemovedMonitorTakesItsBannerAlong()
    {
        const std::uint32_t second = startTwoMonitors();
        QVERIFY(second != 0);
        const auto staying = presentPatch({100, 200, 300, 100});
        const auto going = presentPatch({1280 + 200, 400, 300, 100});
        QTRY_COMPARE(pixel({120, 250}), QColor(Qt::darkGreen));
        QTRY_COMPARE(pixel({1280 + 220, 450}), QColor(Qt::darkGreen));
        // Older compositors lack this command; newer ones keep a monitor whose window is closed.
        if (!m_compositor->unplug(u"X11-%1"_s.arg(outputOnTheRight()))) {
            closeWindow(second);
        }
        QTRY_VERIFY(hasLogged(u"banner taken off the screen: its monitor has gone"_s) ||
                    hasLogged(u"banner taken off the screen: the compositor closed it"_s));
        QTRY_COMPARE(WaylandScreens(m_connection).screens().size(), std::size_t{1});
        const Rect frame = going->frame();
        bool isDone = false;
        going->animate({.duration = Seconds{0.05}, .curve = TimingCurve::easeIn, .alpha = 0, .frame = frame},
                       [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        going->close();
        QCOMPARE(pixel({120, 250}), QColor(Qt::darkGreen));
        const auto next = presentPatch({500, 400, 300, 100});
        QTRY_COMPARE(pixel({520, 450}), QColor(Qt::darkGreen));
    }
};

static int runLayerShellBannerPanels(int argc, char *argv[])
{
    TestDesktop desktop(QSize(2 * monitor.width(), monitor.height()));
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    LayerShellBannerPanelsTest test;
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(LayerShellBannerPanelsTest, runLayerShellBannerPanels);

#include "LayerShellBannerPanelsTest.moc"
