// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Platform/Linux/X11/WindowPlacement.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/support/TestCompositor.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize monitorSize(1280, 800);
constexpr std::chrono::seconds patience(20); // beside other tests, the compositor is slow

} // namespace

/// Two monitors of a Wayland session whose X server knows the pointer only over X11 windows.
class XWaylandScreensTest final : public QObject {
    Q_OBJECT

public:
    XWaylandScreensTest(const QProcessEnvironment &outside, TestCompositor &compositor)
        : m_outside(outside)
        , m_compositor(compositor)
    {
    }

private:
    /// Moves the pointer to this place from the upper left corner of the first monitor.
    void point(QPoint at) const
    {
        TestDesktop::xdotool({u"mousemove"_s, QString::number(at.x()), QString::number(at.y())}, m_outside);
    }

    /// The monitor that the pointer counts as on, from 0.
    [[nodiscard]] std::size_t pointersMonitor() const
    {
        const auto screens = m_screens.screens();
        const Point pointer = m_screens.pointerLocation();
        const auto found = std::ranges::find_if(
            screens, [pointer](const Screen &screen) { return screen.frame.contains(pointer); });
        return static_cast<std::size_t>(found - screens.begin());
    }

    /// Starts a full-screen program on the monitor with the pointer; it gets the keyboard.
    void oppose(const QString &platform)
    {
        QProcessEnvironment environment = m_compositor.environment();
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        m_opponent = TestDesktop::startOpponent({}, environment);
        m_heard.clear();
        QTRY_VERIFY(heard().contains(u"ready"_s));
    }

    QStringList heard()
    {
        m_heard += QString::fromUtf8(m_opponent->readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        return m_heard;
    }

    QProcessEnvironment m_outside;
    TestCompositor &m_compositor;
    WaylandConnection m_connection;
    ToolkitScreens m_screens{m_connection, patience};
    std::unique_ptr<QProcess> m_opponent;
    QStringList m_heard;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_connection.open());
        QTRY_COMPARE(QGuiApplication::screens().size(), 2);
    }

    void cleanup()
    {
        if (m_opponent) {
            m_opponent->terminate();
            QVERIFY(m_opponent->waitForFinished());
            m_opponent.reset();
        }
    }

    void eachQuestionIsAnswered()
    {
        constexpr int many = 25;
        for (const int left : {0, monitorSize.width()}) {
            point({left + 300, 200});
            QTRY_VERIFY(m_screens.pointerLocation().x > left);
            for (int i = 0; i < many; ++i) {
                const auto place = x11::placeOfNewWindow(patience);
                QVERIFY(place.has_value());
                QVERIFY(place->x > left && place->x < left + monitorSize.width() && place->y > 0);
            }
        }
    }

    void thePointersMonitorIsFound()
    {
        for (const std::size_t on : {1, 0, 1}) {
            point({(on == 1 ? monitorSize.width() : 0) + 300, 200});
            QTRY_COMPARE(pointersMonitor(), on);
        }
    }

    void aFullScreenProgramDoesNotHideThePointersMonitor_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::newRow("a Wayland program") << u"wayland"_s;
        QTest::newRow("an X11 program") << u"xcb"_s;
    }

    void aFullScreenProgramDoesNotHideThePointersMonitor()
    {
        QFETCH(QString, platform);
        for (const std::size_t on : {0, 1}) {
            point({(on == 1 ? monitorSize.width() : 0) + 300, 200});
            QTRY_COMPARE(pointersMonitor(), on);
            oppose(platform);
            QTRY_COMPARE(pointersMonitor(), on);
            point({(on == 1 ? 0 : monitorSize.width()) + 300, 200});
            QTRY_COMPARE(pointersMonitor(), 1 - on);
            TestDesktop::xdotool({u"key"_s, u"a"_s}, m_outside);
            QTRY_VERIFY(heard().contains(u"key 65"_s));
            // It was never without the keyboard.
            QCOMPARE(heard().count(u"ready"_s), 1);
            cleanup();
        }
    }

    void nothingIsLeftOfTheQuestion()
    {
        const auto windows = [] { return x11::property(x11::rootWindow(), "_NET_CLIENT_LIST"); };
        QTRY_VERIFY(windows().empty());
        QVERIFY(pointersMonitor() < 2);
        QTRY_VERIFY(windows().empty());
    }

    void aCompositorThatHangsDelaysABannerOnlyBriefly()
    {
        point({monitorSize.width() + 300, 200});
        QTRY_COMPARE(pointersMonitor(), std::size_t{1});
        m_compositor.signal(SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        const Point seen = ToolkitScreens(m_connection).pointerLocation();
        const qint64 waited = timer.elapsed();
        m_compositor.signal(SIGCONT);
        QVERIFY2(waited < 1000, qPrintable(QString::number(waited)));
        QVERIFY(seen == ToolkitScreens().pointerLocation()); // as the X server sees it
        QTRY_COMPARE(pointersMonitor(), std::size_t{1});
    }
};

static int runXWaylandScreens(int argc, char *argv[])
{
    TestDesktop desktop(QSize(2 * monitorSize.width(), monitorSize.height()));
    const QProcessEnvironment outside = QProcessEnvironment::systemEnvironment();
    TestCompositor compositor(monitorSize, 2, TestCompositor::Kind::mutter);
    compositor.enter();
    compositor.enterX11();
    QGuiApplication application(argc, argv);
    XWaylandScreensTest test(outside, compositor);
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(XWaylandScreensTest, runXWaylandScreens);

#include "XWaylandScreensTest.moc"
