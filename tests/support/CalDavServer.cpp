// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/CalDavServer.h"

#include "tests/support/CalendarService.h"
#include "tests/support/ChildProcess.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

void writeServerFile(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

sockaddr_in loopback(int port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int openSocket()
{
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        qFatal("there is no socket");
    }
    return descriptor;
}

int freePort()
{
    const int descriptor = openSocket();
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    if (::bind(descriptor, reinterpret_cast<sockaddr *>(&address), size) != 0 ||
        ::getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &size) != 0) {
        qFatal("there is no free port");
    }
    ::close(descriptor);
    return ntohs(address.sin_port);
}

bool isListening(int port)
{
    const int descriptor = openSocket();
    const sockaddr_in address = loopback(port);
    const bool isThere =
        ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(descriptor);
    return isThere;
}

} // namespace

CalDavServer::CalDavServer() : m_port(freePort())
{
    QDir().mkpath(collection());
    writeServerFile(collection() + u".Radicale.props"_s,
                    R"({"tag": "VCALENDAR", "D:displayname": "Online"})");
    writeServerFile(m_folder.filePath(u"users"_s), "teacher:nobody-knows-it\n");
    start();
}

CalDavServer::~CalDavServer()
{
    stop();
}

void CalDavServer::put(const QString &name, const QByteArray &component) const
{
    writeServerFile(collection() + name + u".ics"_s, calendarText(component));
}

void CalDavServer::remove(const QString &name) const
{
    QFile::remove(collection() + name + u".ics"_s);
}

void CalDavServer::start()
{
    writeServerFile(
        m_folder.filePath(u"config"_s),
        u"[server]\nhosts=127.0.0.1:%1\n[auth]\n%2\n[storage]\nfilesystem_folder=%3\n[rights]\n"
        "type=owner_only\n[logging]\nlevel=warning\n"_s
            .arg(QString::number(m_port),
                 m_isRefusing ? u"type=htpasswd\nhtpasswd_encryption=plain\ndelay=0\nhtpasswd_filename="_s +
                                    m_folder.filePath(u"users"_s)
                              : u"type=none"_s,
                 m_folder.filePath(u"data"_s))
            .toUtf8());
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.setStandardOutputFile(QProcess::nullDevice());
    endWithThisProcess(m_server);
    m_server.start(u"radicale"_s, {u"--config"_s, m_folder.filePath(u"config"_s)});
    const QDeadlineTimer deadline(20000);
    while (!isListening(m_port)) {
        if (deadline.hasExpired() || m_server.state() == QProcess::NotRunning) {
            qFatal("the calendar server does not come up");
        }
        m_server.waitForFinished(20);
    }
}

void CalDavServer::stop()
{
    resume();
    m_server.terminate();
    if (!m_server.waitForFinished(5000)) {
        m_server.kill();
        m_server.waitForFinished(5000);
    }
}

void CalDavServer::hang() const
{
    ::kill(static_cast<pid_t>(m_server.processId()), SIGSTOP);
}

void CalDavServer::resume() const
{
    if (m_server.processId() > 0) {
        ::kill(static_cast<pid_t>(m_server.processId()), SIGCONT);
    }
}

void CalDavServer::addToService(const QString &id) const
{
    CalendarService::addSource(
        id, u"[Data Source]\nDisplayName=Online\nEnabled=true\nParent=caldav-stub\n\n[Authentication]\n"
            "Host=127.0.0.1\nPort=%1\nUser=teacher\nMethod=plain/password\n\n[Security]\nMethod=none\n\n"
            "[WebDAV Backend]\nResourcePath=/teacher/lessons/\n\n[Calendar]\nBackendName=caldav\n\n"
            "[Offline]\nStaySynchronized=true\n"_s.arg(m_port));
}

} // namespace corvane
