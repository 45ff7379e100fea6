// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PrivateBus.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>

namespace corvane {

/// An X desktop of a test's own: a server on a free display, a session bus without services, and one window
/// manager at a time. All that it starts it ends, by process id. Made before the application object, since it
/// sets the environment that the object reads; a desktop that does not come up ends the test program.
class TestDesktop {
public:
    enum class WindowManager { openbox, xfwm4, xfwm4WithCompositing };

    /// One monitor of `size`.
    explicit TestDesktop(QSize size);

    /// Two monitors of 2048 by 1536 beside one another.
    struct TwoMonitors {};
    explicit TestDesktop(TwoMonitors);

    ~TestDesktop();
    TestDesktop(const TestDesktop &) = delete;
    TestDesktop &operator=(const TestDesktop &) = delete;

    /// The session's bus, which is in the environment. On a display without one, the first program that asks
    /// for it would start another that nobody ends.
    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }

    /// Ends the window manager that runs, if one does, and starts this one. It takes a moment until it is
    /// there.
    void startWindowManager(WindowManager manager);
    void stopWindowManager();

    /// Starts the full-screen program that banners have to stand above; in that environment.
    [[nodiscard]] static std::unique_ptr<QProcess>
    startOpponent(const QStringList &arguments = {},
                  const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

    /// Runs xdotool and waits for its end; what it prints.
    static QString xdotool(const QStringList &arguments);

    /// Runs any other tool of the display, likewise.
    static QString run(const QString &program, const QStringList &arguments);

private:
    void startServer(const QString &program, const QStringList &arguments);
    static void end(QProcess &process);

    PrivateBus m_bus;
    QProcess m_server;
    std::unique_ptr<PrivateBus> m_settingsBus; // the one that xfwm4 needs
    std::unique_ptr<QProcess> m_manager;
};

} // namespace corvane
