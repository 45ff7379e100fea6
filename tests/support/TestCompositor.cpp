// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestCompositor.h"

#include "tests/support/ChildProcess.h"

#include <QFile>

#include <csignal>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr int timeout = 30'000; // milliseconds

} // namespace

TestCompositor::TestCompositor(QSize size, int monitors, Kind kind)
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithThisProcess(m_process, SIGTERM); // it then ends the compositor
    m_process.start(QStringLiteral(QUILLET_NESTED_COMPOSITOR),
                    {u"--monitors"_s, QString::number(monitors), kind == Kind::sway ? u"sway"_s : u"mutter"_s,
                     u"%1x%2"_s.arg(size.width()).arg(size.height())});
    QByteArray told;
    while (!told.endsWith("\n\n")) {
        if (!m_process.waitForReadyRead(timeout)) {
            qFatal("the compositor did not come up");
        }
        told += m_process.readAllStandardOutput();
    }
    const QStringList lines = QString::fromUtf8(told).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        m_environment.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
    }
}

TestCompositor::~TestCompositor()
{
    end();
}

void TestCompositor::end()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        m_process.waitForFinished(timeout);
    }
}

void TestCompositor::enter() const
{
    qputenv("WAYLAND_DISPLAY", m_environment.value(u"WAYLAND_DISPLAY"_s).toUtf8());
}

void TestCompositor::enterX11() const
{
    for (const QString &name : {u"DISPLAY"_s, u"XAUTHORITY"_s}) {
        if (m_environment.contains(name)) {
            qputenv(name.toLatin1().constData(), m_environment.value(name).toUtf8());
        }
    }
}

void TestCompositor::signal(int number) const
{
    // The compositor is the only child of the script that runs it.
    QFile children(u"/proc/%1/task/%1/children"_s.arg(m_process.processId()));
    const int process = children.open(QIODevice::ReadOnly) ? children.readAll().trimmed().toInt() : 0;
    if (process <= 0 || ::kill(process, number) != 0) {
        qFatal("the compositor cannot be signalled");
    }
}

bool TestCompositor::unplug(const QString &output) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(u"swaymsg"_s, {u"output"_s, output, u"unplug"_s});
    return process.waitForFinished(timeout) && process.exitCode() == 0;
}

QString TestCompositor::execute(const QStringList &command) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(u"swaymsg"_s, command);
    if (!process.waitForFinished(timeout) || process.exitCode() != 0) {
        qFatal("swaymsg failed: %s", process.readAllStandardError().constData());
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace corvane
