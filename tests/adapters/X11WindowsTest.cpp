// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Utilities/WindowPresentation.h"
#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/WindowScenes.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using WindowManager = TestDesktop::WindowManager;

namespace {

constexpr int windowTimeout = 10'000; // milliseconds
constexpr QSize windowScreenSize(1280, 800);
constexpr int dockThickness = 30;

bool hasState(const QWidget &window, const char *state)
{
    const auto states = x11::property(static_cast<std::uint32_t>(window.winId()), "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), x11::atom(state)) != states.end();
}

/// A stand-in for the real content.
std::unique_ptr<QWidget> content()
{
    auto widget = std::make_unique<QWidget>();
    widget->setFixedWidth(320);
    auto *layout = new QVBoxLayout(widget.get());
    for (const QString &text : {u"10:00  Anna"_s, u"10:30  Ben"_s, u"11:00  Cem"_s, u"11:30  Dora"_s}) {
        layout->addWidget(new QLabel(text));
    }
    layout->addWidget(new QPushButton(u"Test Notification"_s));
    return widget;
}

QColor pixel(QPoint at)
{
    return QGuiApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1).toImage().pixelColor(0, 0);
}

/// A dock on one edge of the desktop.
class Dock final : public QWidget {
public:
    Dock(Qt::Edge edge, QSize screen)
    {
        setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setWindowFlag(Qt::WindowDoesNotAcceptFocus);
        setPalette(QPalette(QColor(60, 64, 72)));
        const int w = screen.width();
        const int h = screen.height();
        constexpr int t = dockThickness;
        QString strut;
        switch (edge) {
        case Qt::TopEdge:
            setGeometry(0, 0, w, t);
            strut = u"0,0,%1,0,0,0,0,0,0,%2,0,0"_s.arg(t).arg(w - 1);
            break;
        case Qt::BottomEdge:
            setGeometry(0, h - t, w, t);
            strut = u"0,0,0,%1,0,0,0,0,0,0,0,%2"_s.arg(t).arg(w - 1);
            break;
        case Qt::LeftEdge:
            setGeometry(0, 0, t, h);
            strut = u"%1,0,0,0,0,%2,0,0,0,0,0,0"_s.arg(t).arg(h - 1);
            break;
        case Qt::RightEdge:
            setGeometry(w - t, 0, t, h);
            strut = u"0,%1,0,0,0,0,0,%2,0,0,0,0"_s.arg(t).arg(h - 1);
            break;
        }
        show();
        TestDesktop::run(u"xprop"_s, {u"-id"_s, QString::number(winId()), u"-f"_s, u"_NET_WM_STRUT_PARTIAL"_s,
                                      u"32c"_s, u"-set"_s, u"_NET_WM_STRUT_PARTIAL"_s, strut});
    }
};

} // namespace

/// The menu bar panel and the program's windows under window managers, beside another program.
class X11WindowsTest final : public QObject {
    Q_OBJECT

public:
    explicit X11WindowsTest(TestDesktop &desktop) : m_desktop(desktop) {}

private:
    TestDesktop &m_desktop;
    ToolkitScreens m_screens;
    ToolkitWindowSystem m_windowSystem;
    std::unique_ptr<QProcess> m_opponent;
    std::unique_ptr<MenuBarPanel> m_menuBarPanel;
    std::unique_ptr<WindowScenes> m_scenes;

    void use(WindowManager manager)
    {
        m_desktop.startWindowManager(manager);
        QVERIFY(isManagerServing());
        QTRY_COMPARE_WITH_TIMEOUT(x11::isComposited(), manager == WindowManager::xfwm4WithCompositing,
                                  windowTimeout);
    }

    /// Starts another program and clicks into its window, which is then in front.
    void oppose()
    {
        m_opponent = m_desktop.startOpponent();
        QTRY_COMPARE_WITH_TIMEOUT(pixel({640, 400}), QColor(u"#a0c0e0"_s), 2 * windowTimeout);
        TestDesktop::xdotool({u"mousemove"_s, u"640"_s, u"700"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(m_opponent->canReadLine() ||
                                     (m_opponent->waitForReadyRead(100), m_opponent->canReadLine()),
                                 windowTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(activeWindow() != 0, windowTimeout);
    }

    [[nodiscard]] static bool hasFocus(const QWidget *window)
    {
        return window != nullptr && window->isActiveWindow() && activeWindow() == window->winId();
    }

    void click(const QWidget *widget)
    {
        const QPoint at = widget->mapToGlobal(widget->rect().center());
        TestDesktop::xdotool(
            {u"mousemove"_s, QString::number(at.x()), QString::number(at.y()), u"click"_s, u"1"_s});
    }

    /// A click on the bell, which is in another program's window, so that the click arrives by bus.
    void clickBell(Point item)
    {
        m_windowSystem.userAsked({});
        m_menuBarPanel->toggle(item);
    }

    void open(const QString &id, const QString &title)
    {
        WindowPresentation::open(
            id, title, [this](const QString &identifier) { m_scenes->open(identifier); }, m_windowSystem);
    }

    void everyManager()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::newRow("openbox") << WindowManager::openbox;
        QTest::newRow("xfwm4") << WindowManager::xfwm4;
        QTest::newRow("xfwm4 with compositing") << WindowManager::xfwm4WithCompositing;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // With this setting xfwm4 keeps windows from taking the keyboard focus unasked.
        const QString folder =
            qEnvironmentVariable("XDG_CONFIG_HOME") + u"/xfce4/xfconf/xfce-perchannel-xml"_s;
        QVERIFY(QDir().mkpath(folder));
        QFile settings(folder + u"/xfwm4.xml"_s);
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<channel name=\"xfwm4\" version=\"1.0\">\n"
                       "  <property name=\"general\" type=\"empty\">\n"
                       "    <property name=\"prevent_focus_stealing\" type=\"bool\" value=\"true\"/>\n"
                       "  </property>\n</channel>\n");
    }

    void init()
    {
        m_menuBarPanel = std::make_unique<MenuBarPanel>(content, m_screens, m_windowSystem);
        m_scenes = std::make_unique<WindowScenes>(m_windowSystem, m_screens);
        const auto add = [this](const QString &identifier, const QString &title, QSize size) {
            m_scenes->add({identifier, title, size, [] { return std::make_unique<QLabel>(u"content"_s); }});
        };
        add(u"setup"_s, u"Welcome to Quillet"_s, {680, 500});
        add(u"help"_s, u"Quillet Help"_s, {920, 620});
    }

    void cleanup()
    {
        m_menuBarPanel.reset();
        m_scenes.reset();
        if (m_opponent) {
            m_opponent->terminate();
            QVERIFY(m_opponent->state() == QProcess::NotRunning || m_opponent->waitForFinished());
            m_opponent.reset();
        }
    }

    void theMenuBarPanelTakesTheKeyboardFromAnotherProgram_data() { everyManager(); }
    void theMenuBarPanelTakesTheKeyboardFromAnotherProgram()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"key"_s, u"Escape"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
        // Open and close it again: each click counts with its own time.
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"mousemove"_s, u"100"_s, u"700"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
    }

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

    void theMenuBarPanelOpensAtTheBellOnEveryEdge_data()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::addColumn<Qt::Edge>("edge");
        QTest::addColumn<Point>("bell"); // y upwards
        QTest::addColumn<QRect>("card"); // y downwards; the height is not compared
        constexpr int gap = 6;
        const std::initializer_list<std::pair<const char *, WindowManager>> managers{
            {"openbox", WindowManager::openbox},
            {"xfwm4", WindowManager::xfwm4},
            {"xfwm4 with compositing", WindowManager::xfwm4WithCompositing}};
        for (const auto &[name, manager] : managers) {
            QTest::addRow("%s top", name)
                << manager << Qt::TopEdge << Point{1200, 785} << QRect(1280 - gap - 320, 30 + gap, 320, 0);
            QTest::addRow("%s bottom", name)
                << manager << Qt::BottomEdge << Point{640, 15} << QRect(480, 800 - 30 - gap, 320, 0);
            QTest::addRow("%s left", name)
                << manager << Qt::LeftEdge << Point{15, 400} << QRect(30 + gap, 400, 320, 0);
            QTest::addRow("%s right", name)
                << manager << Qt::RightEdge << Point{1265, 400} << QRect(1280 - 30 - gap - 320, 400, 320, 0);
        }
    }

    void theMenuBarPanelOpensAtTheBellOnEveryEdge()
    {
        QFETCH(WindowManager, manager);
        QFETCH(Qt::Edge, edge);
        QFETCH(Point, bell);
        QFETCH(QRect, card);
        use(manager);
        const Dock dock(edge, windowScreenSize);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_screens.screens().front().visibleFrame != m_screens.screens().front().frame, windowTimeout);
        clickBell(bell);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        const QWidget *shown = m_menuBarPanel->window()->findChild<QPushButton *>()->parentWidget();
        const auto place = [shown] { return QRect(shown->mapToGlobal(QPoint()), shown->size()); };
        QCOMPARE(place().width(), 320);
        QCOMPARE(place().left(), card.left());
        switch (edge) {
        case Qt::TopEdge:
            QCOMPARE(place().top(), card.top());
            break;
        case Qt::BottomEdge:
            QCOMPARE(place().bottom() + 1, card.top());
            break;
        case Qt::LeftEdge:
        case Qt::RightEdge:
            QVERIFY(std::abs(place().center().y() - card.top()) <= 1);
            break;
        }
        // The X server agrees with the toolkit: the manager has not moved the window.
        const QString told = TestDesktop::xdotool(
            {u"getwindowgeometry"_s, QString::number(m_menuBarPanel->window()->winId())});
        const QPoint corner = m_menuBarPanel->window()->geometry().topLeft();
        QVERIFY2(told.contains(u"Position: %1,%2 "_s.arg(corner.x()).arg(corner.y())), qPrintable(told));
        keepPicture(QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-'));
    }

    void aClickElsewhereClosesTheMenuBarPanel_data() { everyManager(); }
    void aClickElsewhereClosesTheMenuBarPanel()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"mousemove"_s, u"100"_s, u"700"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
        // If the same click was on the bell, it does not open the panel again; a click at another place does.
        clickBell({100, 100});
        QVERIFY(!m_menuBarPanel->isOpen());
        clickBell({640, 790});
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void theMenuBarPanelStaysUsableBesideAWindowThatItOpened_data() { everyManager(); }
    void theMenuBarPanelStaysUsableBesideAWindowThatItOpened()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        m_menuBarPanel->stayOpenBesideWindows();
        open(u"setup"_s, u"Welcome to Quillet"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(u"setup"_s)), windowTimeout);
        QVERIFY(m_menuBarPanel->isOpen());
        m_scenes->window(u"setup"_s)->move(10, 60);
        auto *button = m_menuBarPanel->window()->findChild<QPushButton *>();
        QSignalSpy clicks(button, &QAbstractButton::clicked);
        m_menuBarPanel->window()->raise();
        // Where the window covers the panel, the panel stays behind it until it is clicked.
        QTRY_VERIFY_WITH_TIMEOUT((click(button), QCoreApplication::processEvents(), !clicks.isEmpty()),
                                 windowTimeout);
        QVERIFY(m_menuBarPanel->isOpen());
        QVERIFY(m_scenes->window(u"setup"_s) != nullptr);
        keepPicture(u"beside-"_s + QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-'));
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

static int runX11Windows(int argc, char *argv[])
{
    TestDesktop desktop(windowScreenSize);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11WindowsTest test(desktop);
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(X11WindowsTest, runX11Windows);

#include "X11WindowsTest.moc"
