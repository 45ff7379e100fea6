// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestDesktop.h"

#include "tests/support/ChildProcess.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr int desktopTimeout = 20'000; // milliseconds

} // namespace

TestDesktop::TestDesktop(QSize size)
{
    startServer(u"Xvfb"_s, {u"-screen"_s, u"0"_s, u"%1x%2x24"_s.arg(size.width()).arg(size.height())});
}

TestDesktop::TestDesktop(TwoMonitors)
{
    // No log file, and no access to the machine's virtual terminals.
    startServer(u"Xorg"_s, {u"-config"_s, QStringLiteral(QUILLET_TWO_MONITORS), u"-noreset"_s,
                            u"-novtswitch"_s, u"-sharevts"_s, u"-logfile"_s, QProcess::nullDevice()});
    run(u"xrandr"_s, {u"--addmode"_s, u"DUMMY1"_s, u"2048x1536"_s});
    run(u"xrandr"_s, {u"--output"_s, u"DUMMY1"_s, u"--mode"_s, u"2048x1536"_s, u"--right-of"_s, u"DUMMY0"_s});
}

void TestDesktop::startServer(const QString &program, const QStringList &arguments)
{
    m_server.setStandardErrorFile(QProcess::nullDevice());
    endWithThisProcess(m_server);
    m_server.start(program, QStringList{u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s} + arguments);
    QByteArray display;
    while (!display.endsWith('\n')) {
        if (!m_server.waitForReadyRead(desktopTimeout)) {
            qFatal("the X server did not come up");
        }
        display += m_server.readAllStandardOutput();
    }
    qputenv("DISPLAY", ':' + display.trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
}

TestDesktop::~TestDesktop()
{
    stopWindowManager();
    end(m_server);
}

void TestDesktop::startWindowManager(WindowManager manager)
{
    stopWindowManager();
    m_manager = std::make_unique<QProcess>();
    m_manager->setStandardOutputFile(QProcess::nullDevice());
    m_manager->setStandardErrorFile(QProcess::nullDevice());
    switch (manager) {
    case WindowManager::openbox:
        m_manager->start(u"openbox"_s, {u"--sm-disable"_s});
        break;
    case WindowManager::xfwm4:
    case WindowManager::xfwm4WithCompositing: {
        // It does not start without its settings service, which it finds on the session bus. That service
        // gets its own bus: on the bus of the programs under test, what the toolkit finds must not depend on
        // the installed services.
        if (!m_settingsBus) {
            m_settingsBus = std::make_unique<PrivateBus>(QStringList{u"/usr/share/dbus-1/services"_s});
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_settingsBus->address());
        m_manager->setProcessEnvironment(environment);
        const bool isCompositing = manager == WindowManager::xfwm4WithCompositing;
        m_manager->start(u"xfwm4"_s,
                         {isCompositing ? u"--compositor=on"_s : u"--compositor=off"_s, u"--vblank=off"_s});
        break;
    }
    }
    if (!m_manager->waitForStarted(desktopTimeout)) {
        qFatal("the window manager did not start");
    }
}

void TestDesktop::stopWindowManager()
{
    if (m_manager) {
        end(*m_manager);
        m_manager.reset();
    }
}

std::unique_ptr<QProcess> TestDesktop::startOpponent(const QStringList &arguments,
                                                     const QProcessEnvironment &environment)
{
    auto opponent = std::make_unique<QProcess>();
    opponent->setProcessEnvironment(environment);
    opponent->start(QStringLiteral(QUILLET_OPPONENT), arguments);
    if (!opponent->waitForStarted(desktopTimeout)) {
        qFatal("the opponent did not start");
    }
    return opponent;
}

QString TestDesktop::xdotool(const QStringList &arguments, const QProcessEnvironment &environment)
{
    return run(u"xdotool"_s, arguments, environment);
}

QString TestDesktop::run(const QString &program, const QStringList &arguments,
                         const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(desktopTimeout) || process.exitCode() != 0) {
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

void TestDesktop::end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    process.terminate();
    if (!process.waitForFinished(desktopTimeout / 4)) {
        process.kill();
        process.waitForFinished(desktopTimeout / 4);
    }
}

} // namespace corvane
