// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"

#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/contracts/WindowSystemContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// Counts the presses that the X server reports to this program, whatever they are on.
class PressCounter final : public QAbstractNativeEventFilter {
public:
    PressCounter() { QCoreApplication::instance()->installNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_ge_generic_event_t *>(message);
        if (event->response_type == XCB_GE_GENERIC && event->event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
            ++count;
        }
        return false;
    }

    int count = 0;
};

} // namespace

class ToolkitWindowSystemContractTest final : public WindowSystemContract {
    Q_OBJECT

public:
    explicit ToolkitWindowSystemContractTest(TestDesktop &desktop) : m_desktop(desktop) {}

protected:
    WindowSystem &windowSystem() override { return *m_windowSystem; }

    void setComposited(bool isComposited) override
    {
        manage(isComposited ? TestDesktop::WindowManager::xfwm4WithCompositing
                            : TestDesktop::WindowManager::xfwm4);
    }

    WindowId makeWindow() override
    {
        auto window = std::make_unique<QWidget>();
        window->setGeometry(20, 20, 200, 100);
        const WindowId id = window->winId();
        m_windows[id] = std::move(window);
        return id;
    }

    void show(WindowId window) override
    {
        m_windows.at(window)->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_windows.at(window).get()));
    }

    void destroy(WindowId window) override { m_windows.erase(window); }

    bool isInTaskBar(WindowId window) override
    {
        return contains(x11::rootWindow(), "_NET_CLIENT_LIST", static_cast<std::uint32_t>(window)) &&
               !contains(static_cast<std::uint32_t>(window), "_NET_WM_STATE",
                         x11::atom("_NET_WM_STATE_SKIP_TASKBAR"));
    }

    bool hasFocus(WindowId window) override
    {
        return m_windows.at(window)->isActiveWindow() &&
               contains(x11::rootWindow(), "_NET_ACTIVE_WINDOW", static_cast<std::uint32_t>(window));
    }

    void giveFocusToAnotherProgram() override
    {
        if (!m_opponent) {
            m_opponent = m_desktop.startOpponent();
            QTRY_COMPARE_WITH_TIMEOUT(colourOf(clicked), QColor(u"#a0c0e0"_s), timeout);
        }
        clickAt(clicked);
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activeWindow() == nullptr, timeout);
    }

    void pressElsewhere() override { clickAt(clicked); }

    void pressOn(WindowId window) override
    {
        const QWidget &pressed = *m_windows.at(window);
        clickAndWait(pressed.mapToGlobal(pressed.rect().center()));
    }

private Q_SLOTS:
    void init()
    {
        m_windowSystem.emplace();
        manage(TestDesktop::WindowManager::openbox);
    }

    void cleanup()
    {
        m_windows.clear();
        if (m_opponent) {
            m_opponent->terminate();
            QVERIFY(m_opponent->state() == QProcess::NotRunning || m_opponent->waitForFinished());
            m_opponent.reset();
        }
        m_windowSystem.reset();
    }

    void aPressOnAWindowsFrameIsNotReported()
    {
        const WindowId window = makeWindow();
        m_windows.at(window)->move(300, 300);
        show(window);
        const QWidget &framed = *m_windows.at(window);
        // The toolkit does not always learn the size of the frame, so the server is asked whether there is
        // one.
        const auto id = static_cast<std::uint32_t>(window);
        QTRY_VERIFY_WITH_TIMEOUT(x11::topLevelOf(id) != id, timeout);
        QCoreApplication::processEvents();
        int presses = 0;
        m_windowSystem->watchPresses([&presses] { ++presses; });
        clickAndWait({framed.geometry().center().x(), framed.geometry().y() - 3});
        QCOMPARE(presses, 0);
        clickAt(clicked);
        QTRY_COMPARE_WITH_TIMEOUT(presses, 1, timeout);
    }

    void theWheelIsNotAPress()
    {
        int presses = 0;
        m_windowSystem->watchPresses([&presses] { ++presses; });
        for (const auto *button : {"4", "5", "6", "7", "3"}) {
            clickAt(clicked, QString::fromLatin1(button));
        }
        QTRY_COMPARE_WITH_TIMEOUT(presses, 1, timeout);
    }

    void aPressOnAnotherProgramIsReported()
    {
        giveFocusToAnotherProgram();
        int presses = 0;
        m_windowSystem->watchPresses([&presses] { ++presses; });
        clickAt(clicked);
        QTRY_COMPARE_WITH_TIMEOUT(presses, 1, timeout);
    }

    void inAWaylandSessionNotEveryPressIsReported()
    {
        qputenv("WAYLAND_DISPLAY", "none");
        const bool isEveryPressReported = m_windowSystem->watchPresses([] {});
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(!isEveryPressReported);
    }

private:
    static constexpr QPoint clicked{640, 700}; // outside all windows of this program

    static void clickAt(QPoint place, const QString &button = u"1"_s)
    {
        TestDesktop::xdotool(
            {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s, button});
    }

    /// Returns when the press has been handled, which must happen before the pointer moves on.
    static void clickAndWait(QPoint place)
    {
        PressCounter presses;
        clickAt(place);
        QTRY_VERIFY_WITH_TIMEOUT(presses.count > 0, timeout);
        QCoreApplication::processEvents();
    }

    void manage(TestDesktop::WindowManager manager)
    {
        m_desktop.startWindowManager(manager);
        QVERIFY(isManagerServing());
    }

    [[nodiscard]] static bool contains(std::uint32_t window, const char *property, std::uint32_t value)
    {
        const auto values = x11::property(window, property);
        return std::ranges::find(values, value) != values.end();
    }

    [[nodiscard]] static QColor colourOf(QPoint at)
    {
        const QPixmap pixel = QGuiApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1);
        return pixel.toImage().pixelColor(0, 0);
    }

    TestDesktop &m_desktop;
    std::optional<ToolkitWindowSystem> m_windowSystem;
    std::map<WindowId, std::unique_ptr<QWidget>> m_windows;
    std::unique_ptr<QProcess> m_opponent;
};

static int runToolkitWindowSystemContract(int argc, char *argv[])
{
    TestDesktop desktop(QSize(1280, 800));
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ToolkitWindowSystemContractTest test(desktop);
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(ToolkitWindowSystemContractTest, runToolkitWindowSystemContract);

#include "ToolkitWindowSystemContractTest.moc"
