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

/// A private X desktop: a server on a free display, a session bus without services, and one window manager at
/// a time. The destructor ends them by process id. Create it before the application object, which reads the
/// environment that it sets. A desktop that does not come up ends the test program.
class TestDesktop {
public:
    enum class WindowManager { openbox, xfwm4, xfwm4WithCompositing };

    /// One monitor of `size` pixels.
    explicit TestDesktop(QSize size);

    /// Two monitors of 2048 × 1536 pixels side by side.
    struct TwoMonitors {};
    explicit TestDesktop(TwoMonitors);

    ~TestDesktop();
    TestDesktop(const TestDesktop &) = delete;
    TestDesktop &operator=(const TestDesktop &) = delete;

    /// The session bus, set in the environment. On a display without one, the first program that needs a bus
    /// would start one that nobody ends.
    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }

    /// Ends the running window manager, if any, and starts `manager`, which may not be ready on return.
    void startWindowManager(WindowManager manager);
    void stopWindowManager();

    /// Starts the full-screen program that banners must stay above, in `environment`.
    [[nodiscard]] static std::unique_ptr<QProcess>
    startOpponent(const QStringList &arguments = {},
                  const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

    /// Runs xdotool in `environment`, waits for its end and returns its output. Ends the test program on an
    /// error.
    static QString xdotool(const QStringList &arguments,
                           const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

    /// Runs another tool for the display in the same way.
    static QString run(const QString &program, const QStringList &arguments,
                       const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

private:
    void startServer(const QString &program, const QStringList &arguments);
    static void end(QProcess &process);

    PrivateBus m_bus;
    QProcess m_server;
    std::unique_ptr<PrivateBus> m_settingsBus; // for xfwm4's settings service
    std::unique_ptr<QProcess> m_manager;
};

} // namespace corvane
