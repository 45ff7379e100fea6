// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"
#include "Corvane/Views/MenuBarPanel.h"
#include "Corvane/Views/WindowScenes.h"
#include "tests/support/TestDesktop.h"

#include <QApplication>
#include <QColor>
#include <QPoint>
#include <QProcess>
#include <QString>
#include <QTest>
#include <QWidget>

#include <memory>

namespace corvane {

/// The menu bar panel and two of the program's windows under window managers, beside another program. A test
/// class derives from it and runs with runX11Windows().
class X11WindowsFixture : public QObject {
    Q_OBJECT

public:
    explicit X11WindowsFixture(TestDesktop &desktop) : m_desktop(desktop) {}

    static constexpr QSize screenSize{1280, 800};

protected:
    using WindowManager = TestDesktop::WindowManager;

    static constexpr int windowTimeout = 10'000; // milliseconds

    void use(WindowManager manager);
    /// A row for each window manager.
    static void everyManager();

    /// Starts another program and clicks into its window, which is then in front.
    void oppose();
    /// The colour on the screen.
    [[nodiscard]] static QColor pixel(QPoint at);
    [[nodiscard]] static bool hasFocus(const QWidget *window);
    static void click(const QWidget *widget);
    /// A click on the bell, which is in another program's window, so that the click arrives by bus.
    void clickBell(Point item);
    void open(const QString &id, const QString &title);

    TestDesktop &m_desktop;
    ToolkitScreens m_screens;
    ToolkitWindowSystem m_windowSystem;
    std::unique_ptr<QProcess> m_opponent;
    std::unique_ptr<MenuBarPanel> m_menuBarPanel;
    std::unique_ptr<WindowScenes> m_scenes;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};

/// Runs a test class that derives from X11WindowsFixture.
template <typename Test>
int runX11Windows(int argc, char *argv[])
{
    TestDesktop desktop(X11WindowsFixture::screenSize);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Test test(desktop);
    return QTest::qExec(&test, argc, argv);
}

} // namespace corvane
