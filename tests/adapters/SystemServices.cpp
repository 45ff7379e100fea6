// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/SystemServices.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>

#include <qcoro/qcorodbuspendingcall.h>

#include <tuple>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr int timeoutMilliseconds = 20'000;

constexpr auto loginService = "org.freedesktop.login1"_L1;
constexpr auto loginPath = "/org/freedesktop/login1"_L1;
constexpr auto managerService = "org.freedesktop.NetworkManager"_L1;
constexpr auto managerPath = "/org/freedesktop/NetworkManager"_L1;
constexpr auto portalService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto portalInterface = "org.freedesktop.portal.NetworkMonitor"_L1;

QCoro::Task<QDBusMessage> ask(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, timeoutMilliseconds);
}

void awaitName(const QDBusConnection &bus, const QString &name)
{
    if (!QTest::qWaitFor([&] { return bus.interface()->isServiceRegistered(name); }, timeoutMilliseconds)) {
        qFatal("a mock service does not come up");
    }
}

QDBusConnection systemControl()
{
    return QDBusConnection(u"system control"_s);
}

QDBusConnection sessionControl()
{
    return QDBusConnection(u"session control"_s);
}

} // namespace

SystemServices::SystemServices()
{
    for (const QString &name : {u"system"_s, u"system control"_s}) {
        QDBusConnection::connectToBus(systemDaemon.address(), name);
    }
    for (const QString &name : {u"session"_s, u"session control"_s}) {
        QDBusConnection::connectToBus(sessionDaemon.address(), name);
    }
}

SystemServices::~SystemServices()
{
    for (const QString &name : {u"system"_s, u"session"_s, u"system control"_s, u"session control"_s}) {
        QDBusConnection::disconnectFromBus(name);
    }
}

QDBusConnection SystemServices::systemBus() const
{
    return QDBusConnection(u"system"_s);
}

QDBusConnection SystemServices::sessionBus() const
{
    return QDBusConnection(u"session"_s);
}

void SystemServices::startSessionManager()
{
    sessionManager =
        std::make_unique<MockService>(systemDaemon, u"--system"_s, QStringList{u"--template"_s, u"logind"_s});
    awaitName(systemControl(), loginService);
}

void SystemServices::prepareForSleep(bool begins)
{
    call(systemControl(), loginService, loginPath, u"EmitSignal"_s,
         {u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s, u"b"_s,
          QVariantList{QVariant::fromValue(QDBusVariant(begins))}});
}

void SystemServices::startNetworkManager(uint state)
{
    networkManager = std::make_unique<MockService>(systemDaemon, u"--system"_s,
                                                   QStringList{u"--template"_s, u"networkmanager"_s});
    awaitName(systemControl(), managerService);
    call(systemControl(), managerService, managerPath, u"SetGlobalConnectionState"_s, {state});
}

void SystemServices::setNetworkManager(uint state, uint connectivity)
{
    call(systemControl(), managerService, managerPath, u"SetConnectivity"_s, {connectivity});
    call(systemControl(), managerService, managerPath, u"SetGlobalConnectionState"_s, {state});
}

void SystemServices::startPortal(bool isAvailable)
{
    portal = std::make_unique<MockService>(sessionDaemon, u"--session"_s,
                                           QStringList{portalService, portalPath, portalInterface});
    awaitName(sessionControl(), portalService);
    setPortal(isAvailable);
}

void SystemServices::setPortal(bool isAvailable)
{
    call(sessionControl(), portalService, portalPath, u"AddMethod"_s,
         {QString(portalInterface), u"GetAvailable"_s, QString(), u"b"_s,
          isAvailable ? u"ret = True"_s : u"ret = False"_s});
    call(sessionControl(), portalService, portalPath, u"EmitSignal"_s,
         {QString(portalInterface), u"changed"_s, QString(), QVariantList()});
}

qsizetype SystemServices::questionsToPortal() const
{
    const QVariantList answer =
        call(sessionControl(), portalService, portalPath, u"GetMethodCalls"_s, {u"GetAvailable"_s});
    const auto questions = answer.value(0).value<QDBusArgument>();
    qsizetype count = 0;
    questions.beginArray();
    while (!questions.atEnd()) {
        quint64 time = 0;
        QVariantList arguments;
        questions.beginStructure();
        questions >> time >> arguments;
        questions.endStructure();
        ++count;
    }
    questions.endArray();
    return count;
}

// Calls through the watcher's own connections, where answers arrive after everything sent before. Several
// rounds, since some of the watcher's calls depend on the answers to others.
void SystemServices::settle() const
{
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round) {
        const std::tuple<QDBusConnection, QString, const MockService *> roads[] = {
            {systemBus(), loginService, sessionManager.get()},
            {systemBus(), managerService, networkManager.get()},
            {sessionBus(), portalService, portal.get()}};
        for (const auto &[bus, service, mock] : roads) {
            const bool isSuspended = mock != nullptr && mock->isSuspended();
            if (!isSuspended && bus.isConnected() && bus.interface()->isServiceRegistered(service)) {
                const auto ping = QDBusMessage::createMethodCall(service, u"/"_s,
                                                                 u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
                QCoro::waitFor(ask(bus, ping));
            }
        }
        // The answers arrive through the event loop.
        QCoreApplication::processEvents();
    }
}

QVariantList SystemServices::call(const QDBusConnection &bus, const QString &service, const QString &path,
                                  const QString &method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Mock"_s, method);
    message.setArguments(arguments);
    const QDBusMessage answer = QCoro::waitFor(ask(bus, message));
    if (answer.type() != QDBusMessage::ReplyMessage) {
        qFatal("a mock service refuses: %s", qPrintable(answer.errorMessage()));
    }
    return answer.arguments();
}

} // namespace corvane
