// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/AgentRoom.h"

#include <signal.h>

#include <QDBusConnectionInterface>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int timeout = 30'000; // milliseconds

const QString agentName = u"com.ordwinsoftware.Quillet.NotificationAgent"_s;

int roomNumber = 0;

} // namespace

AgentRoom::AgentRoom(Start start)
    : m_connectionName(u"agent-room-%1"_s.arg(++roomNumber))
    , m_connection(m_connectionName)
{
    // Programs that the bus starts inherit its environment.
    for (const QString &name : {u"state"_s, u"config"_s, u"services"_s}) {
        QDir(m_folder.path()).mkpath(name);
    }
    qputenv("XDG_STATE_HOME", m_folder.filePath(u"state"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", m_folder.filePath(u"config"_s).toUtf8());
    if (start == Start::byBus) {
        QFile service(m_folder.filePath(u"services/agent.service"_s));
        if (!service.open(QIODevice::WriteOnly)) {
            qFatal("the service file cannot be written");
        }
        // A bus that does not run under systemd ignores SystemdService.
        service.write(
            u"[D-BUS Service]\nName=%1\nExec=\"%2\"\nSystemdService=quillet-notification-agent.service\n"_s
                .arg(agentName, QUILLET_AGENT)
                .toUtf8());
    }
    m_bus = std::make_unique<PrivateBus>(QStringList{m_folder.filePath(u"services"_s)});
    m_connection = QDBusConnection::connectToBus(m_bus->address(), m_connectionName);
}

AgentRoom::~AgentRoom()
{
    const qint64 owner = ownerProcess();
    if (m_agent) {
        killAgent();
    }
    if (owner > 0) {
        ::kill(static_cast<pid_t>(owner), SIGKILL);
    }
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void AgentRoom::addService(const QString &name, const QString &command)
{
    QFile script(m_folder.filePath(name + u".sh"_s));
    QFile service(m_folder.filePath(u"services/%1.service"_s.arg(name)));
    if (!script.open(QIODevice::WriteOnly) || !service.open(QIODevice::WriteOnly)) {
        qFatal("the service file cannot be written");
    }
    script.write(command.toUtf8() + '\n');
    service.write(u"[D-BUS Service]\nName=%1\nExec=/bin/sh \"%2\"\n"_s.arg(name, script.fileName()).toUtf8());
}

void AgentRoom::launchAgent(const QStringList &arguments, const QString &shell)
{
    m_agent = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    m_agent->setProcessEnvironment(environment);
    m_agent->setStandardErrorFile(QProcess::nullDevice());
    if (shell.isEmpty()) {
        m_agent->start(QUILLET_AGENT, arguments);
    } else {
        m_agent->start(u"/bin/bash"_s,
                       QStringList{u"-c"_s, shell + u"; exec \"$0\" \"$@\""_s, QUILLET_AGENT} + arguments);
    }
    if (!m_agent->waitForStarted(timeout)) {
        qFatal("the agent does not start");
    }
}

void AgentRoom::startAgent(const QString &shell)
{
    launchAgent({}, shell);
    if (!QTest::qWaitFor([this] { return isNameOwned(); }, timeout)) {
        qFatal("the agent does not take its name");
    }
}

void AgentRoom::killAgent()
{
    m_agent->kill();
    m_agent->waitForFinished(timeout);
}

bool AgentRoom::isNameOwned(const QString &name) const
{
    return m_connection.interface() != nullptr &&
           m_connection.interface()->isServiceRegistered(name.isEmpty() ? agentName : name);
}

qint64 AgentRoom::ownerProcess() const
{
    if (!m_connection.isConnected() || !isNameOwned()) {
        return 0;
    }
    const QDBusReply<uint> process = m_connection.interface()->servicePid(agentName);
    return process.isValid() ? process.value() : 0;
}

QDBusMessage AgentRoom::message(const QString &method, const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(
        agentName, u"/com/ordwinsoftware/Quillet/NotificationAgent"_s, agentName, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage AgentRoom::call(const QString &method, const QVariantList &arguments) const
{
    return m_connection.call(message(method, arguments), QDBus::Block, timeout);
}

QDBusMessage AgentRoom::add(const PendingRequest &request) const
{
    return call(request.isQuiet ? u"AddQuietly"_s : u"Add"_s,
                {request.identifier, request.title, request.body, request.categoryIdentifier,
                 request.fireDate, request.expirationDate});
}

QDBusMessage AgentRoom::remove(const QStringList &identifiers) const
{
    return call(u"RemovePendingRequests"_s, {identifiers});
}

QStringList AgentRoom::pending() const
{
    const QDBusMessage answer = call(u"PendingRequests"_s, {});
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toStringList()
                                                       : QStringList{u"error: "_s + answer.errorMessage()};
}

QString AgentRoom::entryPath() const
{
    return m_folder.filePath(u"config/autostart/com.ordwinsoftware.Quillet.NotificationAgent.desktop"_s);
}

QString AgentRoom::program()
{
    return QUILLET_AGENT;
}

QString AgentRoom::log() const
{
    QFile file(m_folder.filePath(u"state/Logs/Quillet/quillet-notification-agent.log"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

AgentRoom::Memory AgentRoom::memoryOf(qint64 process)
{
    Memory memory;
    QFile file(u"/proc/%1/smaps_rollup"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return memory;
    }
    for (const QByteArray &line : file.readAll().split('\n')) {
        const double size = line.simplified().split(' ').value(1).toDouble() / 1024;
        if (line.startsWith("Rss:")) {
            memory.residentMiB = size;
        } else if (line.startsWith("Private_Clean:") || line.startsWith("Private_Dirty:")) {
            memory.privateMiB += size;
        }
    }
    return memory;
}

qint64 AgentRoom::now()
{
    return QDateTime::currentSecsSinceEpoch();
}

} // namespace corvane
