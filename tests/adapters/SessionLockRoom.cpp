// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/SessionLockRoom.h"

#include <qcoro/qcorodbuspendingcall.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

QCoro::Task<QDBusMessage> askLogin(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, 10000);
}

} // namespace

void SessionLockRoom::begin()
{
    m_systemBus = std::make_unique<PrivateBus>(QStringList{}, PrivateBus::Kind::system);
    m_sessionBus = std::make_unique<PrivateBus>();
    qunsetenv("XDG_SESSION_ID");
}

void SessionLockRoom::end()
{
    m_watcher.reset();
    m_manager.reset();
    m_saver.reset();
    for (const QString &name : {u"system"_s, u"session"_s, u"system control"_s, u"session control"_s}) {
        QDBusConnection::disconnectFromBus(name);
    }
    m_systemBus.reset();
    m_sessionBus.reset();
    qunsetenv("XDG_SESSION_ID");
}

QDBusConnection SessionLockRoom::control(const PrivateBus &bus, const QString &name)
{
    const QDBusConnection known(name);
    return known.isConnected() ? known : QDBusConnection::connectToBus(bus.address(), name);
}

void SessionLockRoom::awaitName(const QDBusConnection &bus, const QString &name)
{
    QTRY_VERIFY_WITH_TIMEOUT(bus.interface()->isServiceRegistered(name), 20000);
}

void SessionLockRoom::startManager()
{
    m_manager =
        std::make_unique<MockService>(*m_systemBus, u"--system"_s, QStringList{u"--template"_s, u"logind"_s});
    awaitName(control(*m_systemBus, u"system control"_s), u"org.freedesktop.login1"_s);
    addSession(u"c1"_s);
    // The template has no GetSessionByPID.
    callManager(u"/org/freedesktop/login1"_s, u"org.freedesktop.DBus.Mock"_s, u"AddMethod"_s,
                {u"org.freedesktop.login1.Manager"_s, u"GetSessionByPID"_s, u"u"_s, u"o"_s,
                 u"ret = '/org/freedesktop/login1/session/c1'"_s});
}

void SessionLockRoom::addSession(const QString &id)
{
    callManager(u"/org/freedesktop/login1"_s, u"org.freedesktop.DBus.Mock"_s, u"AddSession"_s,
                {id, u"seat0"_s, 1000U, u"teacher"_s, true});
}

void SessionLockRoom::startSaver()
{
    m_saver = std::make_unique<MockService>(*m_sessionBus, u"--session"_s,
                                            QStringList{u"--template"_s, u"gnome_screensaver"_s});
    awaitName(control(*m_sessionBus, u"session control"_s), u"org.gnome.ScreenSaver"_s);
}

void SessionLockRoom::make()
{
    m_watcher = std::make_unique<SessionLockWatcher>(
        QDBusConnection::connectToBus(m_systemBus->address(), u"system"_s),
        QDBusConnection::connectToBus(m_sessionBus->address(), u"session"_s));
    m_changes = std::make_unique<QSignalSpy>(m_watcher.get(), &SessionLockWatcher::lockedChanged);
}

void SessionLockRoom::watch()
{
    make();
    settle();
}

void SessionLockRoom::settle()
{
    for (int round = 0; round < 3; ++round) {
        for (const QString &name : {u"system"_s, u"session"_s}) {
            const QDBusConnection bus(name);
            if (!bus.isConnected()) {
                continue;
            }
            const QStringList names = bus.interface()->registeredServiceNames();
            for (const QString &service : {u"org.freedesktop.login1"_s, u"org.gnome.ScreenSaver"_s}) {
                if (names.contains(service)) {
                    const auto ping = QDBusMessage::createMethodCall(
                        service, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
                    QCoro::waitFor(askLogin(bus, ping));
                }
            }
        }
    }
}

void SessionLockRoom::callManager(const QString &path, const QString &interface, const QString &method,
                                  const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer = QCoro::waitFor(askLogin(control(*m_systemBus, u"system control"_s), message));
    QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
}

void SessionLockRoom::emitFromSession(const QString &signal)
{
    callManager(u"/org/freedesktop/login1/session/c1"_s, u"org.freedesktop.DBus.Mock"_s, u"EmitSignal"_s,
                {u"org.freedesktop.login1.Session"_s, signal, QString(), QVariantList()});
}

void SessionLockRoom::setHint(bool locked)
{
    callManager(u"/org/freedesktop/login1/session/c1"_s, u"org.freedesktop.login1.Session"_s,
                u"SetLockedHint"_s, {locked});
}

void SessionLockRoom::setSaver(bool active)
{
    auto message = QDBusMessage::createMethodCall(u"org.gnome.ScreenSaver"_s, u"/org/gnome/ScreenSaver"_s,
                                                  u"org.gnome.ScreenSaver"_s, u"SetActive"_s);
    message << active;
    const QDBusMessage answer =
        QCoro::waitFor(askLogin(control(*m_sessionBus, u"session control"_s), message));
    QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
}

QList<bool> SessionLockRoom::changes() const
{
    QList<bool> changes;
    for (const QList<QVariant> &change : *m_changes) {
        changes.append(change.first().toBool());
    }
    return changes;
}

} // namespace corvane
