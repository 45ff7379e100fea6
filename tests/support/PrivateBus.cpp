// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/PrivateBus.h"

#include "tests/support/ChildProcess.h"

#include <QFile>

namespace corvane {

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus(const QStringList &serviceDirectories, Kind kind)
{
    QString services;
    for (const QString &directory : serviceDirectories) {
        services += u"  <servicedir>"_s + directory.toHtmlEscaped() + u"</servicedir>\n"_s;
    }
    const QString configuration =
        u"<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
        " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
        "<busconfig>\n  <type>%1</type>\n  <listen>unix:path=%2/bus</listen>\n%3"
        "  <policy context=\"default\">\n    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
        "    <allow eavesdrop=\"true\"/>\n    <allow own=\"*\"/>\n  </policy>\n</busconfig>\n"_s.arg(
            kind == Kind::session ? u"session"_s : u"system"_s, m_folder.path(), services);
    const QString file = m_folder.filePath(u"bus.conf"_s);
    QFile configurationFile(file);
    if (!configurationFile.open(QIODevice::WriteOnly) ||
        configurationFile.write(configuration.toUtf8()) < 0) {
        qFatal("the private bus's configuration cannot be written");
    }
    configurationFile.close();

    // Otherwise the daemon warns at each start where the limit of open files is low.
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    endWithThisProcess(m_daemon);
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s, u"--config-file="_s + file});
    while (m_address.isEmpty()) {
        if (!m_daemon.waitForReadyRead(10000)) {
            qFatal("the private bus does not come up");
        }
        if (m_daemon.canReadLine()) {
            m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        }
    }
}

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::stop()
{
    if (m_daemon.state() == QProcess::NotRunning) {
        return;
    }
    // SIGKILL, because a test may have stopped the daemon with SIGSTOP.
    m_daemon.kill();
    m_daemon.waitForFinished(5000);
}

} // namespace corvane
