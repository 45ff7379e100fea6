// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestDesktop.h"

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr int patience = 20'000; // milliseconds

} // namespace

TestDesktop::TestDesktop(QSize size)
{
    m_server.setProcessChannelMode(QProcess::SeparateChannels);
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s,
                               u"%1x%2x24"_s.arg(size.width()).arg(size.height()), u"-nolisten"_s, u"tcp"_s});
    QByteArray display;
    while (!display.endsWith('\n')) {
        if (!m_server.waitForReadyRead(patience)) {
            qFatal("the X server did not come up");
        }
        display += m_server.readAllStandardOutput();
    }
    qputenv("DISPLAY", ':' + display.trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
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
    // A group of its own, so that what it starts ends with it.
    m_manager->setChildProcessModifier([] { ::setsid(); });
    switch (manager) {
    case WindowManager::openbox:
        m_manager->start(u"openbox"_s, {u"--sm-disable"_s});
        break;
    case WindowManager::xfwm4:
        m_manager->start(u"dbus-run-session"_s, {u"--"_s, u"xfwm4"_s, u"--compositor=off"_s});
        break;
    case WindowManager::xfwm4WithCompositing:
        m_manager->start(u"dbus-run-session"_s,
                         {u"--"_s, u"xfwm4"_s, u"--compositor=on"_s, u"--vblank=off"_s});
        break;
    }
    if (!m_manager->waitForStarted(patience)) {
        qFatal("the window manager did not start");
    }
}

void TestDesktop::stopWindowManager()
{
    if (m_manager) {
        ::kill(static_cast<pid_t>(-m_manager->processId()), SIGTERM);
        end(*m_manager);
        m_manager.reset();
    }
}

bool TestDesktop::isManaged()
{
    // The property outlives a manager that was killed; the window it names does not.
    const auto window = x11::property(x11::rootWindow(), "_NET_SUPPORTING_WM_CHECK");
    return !window.empty() && x11::property(window.front(), "_NET_SUPPORTING_WM_CHECK") == window;
}

std::unique_ptr<QProcess> TestDesktop::startOpponent(const QStringList &arguments) const
{
    auto opponent = std::make_unique<QProcess>();
    opponent->start(QStringLiteral(QUILLET_OPPONENT), arguments);
    if (!opponent->waitForStarted(patience)) {
        qFatal("the opponent did not start");
    }
    return opponent;
}

QString TestDesktop::xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start(u"xdotool"_s, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0) {
        qFatal("xdotool failed: %s", process.readAllStandardError().constData());
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

void TestDesktop::end(QProcess &process)
{
    process.terminate();
    if (!process.waitForFinished(patience / 4)) {
        process.kill();
        process.waitForFinished(patience / 4);
    }
}

} // namespace corvane
