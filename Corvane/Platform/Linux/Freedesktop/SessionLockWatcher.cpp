// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"

#include "Corvane/Platform/Linux/Freedesktop/BusNames.h"
#include "Corvane/Utilities/Spawn.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <array>
#include <functional>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto loginService = "org.freedesktop.login1"_L1;
constexpr auto loginPath = "/org/freedesktop/login1"_L1;
constexpr auto loginInterface = "org.freedesktop.login1.Manager"_L1;
constexpr auto sessionInterface = "org.freedesktop.login1.Session"_L1;
constexpr auto busName = "org.freedesktop.DBus"_L1;
constexpr auto busPath = "/org/freedesktop/DBus"_L1;

// The screen savers that emit ActiveChanged: their names, which are also their interfaces, and the objects
// that answer GetActive.
struct ScreenSaver {
    QLatin1StringView name;
    QLatin1StringView path;
};
constexpr std::array screenSavers{
    ScreenSaver{"org.freedesktop.ScreenSaver"_L1, "/org/freedesktop/ScreenSaver"_L1},
    ScreenSaver{"org.gnome.ScreenSaver"_L1, "/org/gnome/ScreenSaver"_L1},
    ScreenSaver{"org.mate.ScreenSaver"_L1, "/org/mate/ScreenSaver"_L1},
    ScreenSaver{"org.cinnamon.ScreenSaver"_L1, "/org/cinnamon/ScreenSaver"_L1},
    ScreenSaver{"org.xfce.ScreenSaver"_L1, "/org/xfce/ScreenSaver"_L1},
};

QDBusMessage call(const QString &service, const QString &path, QLatin1StringView interface,
                  const QString &method)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setAutoStartService(false);
    return message;
}

} // namespace

SessionLockWatcher::SessionLockWatcher(QDBusConnection systemBus, QDBusConnection sessionBus, QObject *parent)
    : QObject(parent)
    , m_systemBus(std::move(systemBus))
    , m_sessionBus(std::move(sessionBus))
{
    watchScreenSavers();
    watchSessionManager();
}

void SessionLockWatcher::then(const QDBusPendingCall &call,
                              std::function<void(const QDBusMessage &)> onAnswer)
{
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, onAnswer = std::move(onAnswer)] {
        watcher->deleteLater();
        onAnswer(watcher->reply());
    });
}

void SessionLockWatcher::watchScreenSavers()
{
    // On a broken connection no answer ever comes.
    if (!m_sessionBus.isConnected()) {
        return;
    }
    m_sessionBus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                         u"Disconnected"_s, this, SLOT(busWasLost(QDBusMessage)));
    m_saverOwners = new QDBusServiceWatcher(this);
    m_saverOwners->setConnection(m_sessionBus);
    m_saverOwners->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(m_saverOwners, &QDBusServiceWatcher::serviceUnregistered, this, &SessionLockWatcher::removeSaver);

    auto *arrivals = new QDBusServiceWatcher(this);
    arrivals->setConnection(m_sessionBus);
    arrivals->setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    connect(arrivals, &QDBusServiceWatcher::serviceRegistered, this, &SessionLockWatcher::queryScreenSaver);
    for (const ScreenSaver &saver : screenSavers) {
        // Without a service name: to subscribe by name, Qt would first ask for the name's owner and block.
        m_sessionBus.connect({}, {}, saver.name, u"ActiveChanged"_s, this, SLOT(saverChanged(QDBusMessage)));
        arrivals->addWatchedService(saver.name);
        queryScreenSaver(saver.name);
    }
}

void SessionLockWatcher::queryScreenSaver(const QString &name)
{
    for (const ScreenSaver &saver : screenSavers) {
        if (saver.name != name) {
            continue;
        }
        // Not every version of Qt reports the sender of a reply, so the unique name is looked up first.
        auto question = call(busName, busPath, busName, u"GetNameOwner"_s);
        question << QString(saver.name);
        then(m_sessionBus.asyncCall(question, bus::questionTimeout),
             [this, saver](const QDBusMessage &reply) {
                 const QString owner = reply.arguments().value(0).toString();
                 if (reply.type() != QDBusMessage::ReplyMessage || owner.isEmpty()) {
                     return;
                 }
                 then(m_sessionBus.asyncCall(call(owner, saver.path, saver.name, u"GetActive"_s),
                                             bus::questionTimeout),
                      [this, owner](const QDBusMessage &answer) {
                          // A signal received meanwhile is newer than this answer.
                          if (answer.type() == QDBusMessage::ReplyMessage && !m_savers.contains(owner)) {
                              handleSaverState(owner, answer);
                          }
                      });
             });
    }
}

void SessionLockWatcher::saverChanged(const QDBusMessage &message)
{
    handleSaverState(message.service(), message);
}

void SessionLockWatcher::handleSaverState(const QString &owner, const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.isEmpty() || arguments.constFirst().typeId() != QMetaType::Bool) {
        return;
    }
    const bool isActive = arguments.constFirst().toBool();
    if (!m_savers.contains(owner)) {
        m_saverOwners->addWatchedService(owner);
    }
    m_savers.insert(owner, isActive);
    if (!isActive && message.type() == QDBusMessage::SignalMessage) {
        m_lockRequested = false;
    }
    update();
}

void SessionLockWatcher::removeSaver(const QString &owner)
{
    m_saverOwners->removeWatchedService(owner);
    if (m_savers.take(owner)) {
        // The screen saver that carried out the Lock request is gone, and its lock with it.
        m_lockRequested = false;
    }
    update();
}

void SessionLockWatcher::watchSessionManager()
{
    if (!m_systemBus.isConnected()) {
        return;
    }
    m_systemBus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                        u"Disconnected"_s, this, SLOT(busWasLost(QDBusMessage)));
    auto *watcher =
        new QDBusServiceWatcher(loginService, m_systemBus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                dropSession();
                if (!newOwner.isEmpty()) {
                    querySession();
                }
            });
    querySession();
}

void SessionLockWatcher::querySession()
{
    // The process of a program that the service manager or the bus started belongs to no session; the session
    // manager then resolves "auto".
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    if (!id.isEmpty()) {
        querySessionPath(u"GetSession"_s, id, false);
    } else {
        querySessionPath(u"GetSessionByPID"_s, static_cast<uint>(QCoreApplication::applicationPid()), false);
    }
}

void SessionLockWatcher::querySessionPath(const QString &method, const QVariant &argument, bool isLastResort)
{
    QDBusMessage message = call(loginService, loginPath, loginInterface, method);
    message << argument;
    then(m_systemBus.asyncCall(message, bus::questionTimeout),
         [this, isLastResort, life = m_managerLife](const QDBusMessage &answer) {
             if (life != m_managerLife) {
                 return;
             }
             const QVariantList arguments = answer.arguments();
             if (answer.type() == QDBusMessage::ReplyMessage && !arguments.isEmpty()) {
                 const QString path = arguments.constFirst().value<QDBusObjectPath>().path();
                 if (!path.isEmpty()) {
                     setSessionPath(path);
                 }
             } else if (!isLastResort) {
                 querySessionPath(u"GetSession"_s, u"auto"_s, true);
             }
         });
}

void SessionLockWatcher::setSessionPath(const QString &path)
{
    m_sessionPath = path;
    m_hintWasSignalled = false;
    m_systemBus.connect({}, path, sessionInterface, u"Lock"_s, this, SLOT(sessionLockRequested()));
    m_systemBus.connect({}, path, sessionInterface, u"Unlock"_s, this, SLOT(sessionUnlockRequested()));
    m_systemBus.connect({}, path, bus::propertiesInterface, u"PropertiesChanged"_s, this,
                        SLOT(sessionPropertiesChanged(QDBusMessage)));
    QDBusMessage message = call(loginService, path, bus::propertiesInterface, u"Get"_s);
    message << QString(sessionInterface) << u"LockedHint"_s;
    then(m_systemBus.asyncCall(message, bus::questionTimeout),
         [this, life = m_managerLife](const QDBusMessage &answer) {
             const QVariantList arguments = answer.arguments();
             if (life != m_managerLife || m_hintWasSignalled || answer.type() != QDBusMessage::ReplyMessage ||
                 arguments.isEmpty()) {
                 return;
             }
             m_lockedHint = arguments.constFirst().value<QDBusVariant>().variant().toBool();
             update();
         });
}

void SessionLockWatcher::dropSession()
{
    ++m_managerLife;
    if (!m_sessionPath.isEmpty()) {
        const QString path = std::exchange(m_sessionPath, {});
        m_systemBus.disconnect({}, path, sessionInterface, u"Lock"_s, this, SLOT(sessionLockRequested()));
        m_systemBus.disconnect({}, path, sessionInterface, u"Unlock"_s, this, SLOT(sessionUnlockRequested()));
        m_systemBus.disconnect({}, path, bus::propertiesInterface, u"PropertiesChanged"_s, this,
                               SLOT(sessionPropertiesChanged(QDBusMessage)));
    }
    m_lockRequested = false;
    m_lockedHint = false;
    update();
}

void SessionLockWatcher::sessionLockRequested()
{
    m_lockRequested = true;
    spawn(endRequest(this, ++m_requests));
    update();
}

QCoro::Task<void> SessionLockWatcher::endRequest(QPointer<SessionLockWatcher> watcher, int request)
{
    co_await wait(requestTimeout);
    if (watcher && watcher->m_requests == request) {
        watcher->m_lockRequested = false;
        watcher->update();
    }
}

void SessionLockWatcher::sessionUnlockRequested()
{
    m_lockRequested = false;
    // A locker that maintains the hint resets it itself. A locker that crashed never does; sending Unlock is
    // then the way to get the session back.
    m_lockedHint = false;
    m_hintWasSignalled = true;
    update();
}

void SessionLockWatcher::sessionPropertiesChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 2 || arguments.at(0).toString() != sessionInterface) {
        return;
    }
    const auto changed = qdbus_cast<QVariantMap>(arguments.at(1));
    const auto hint = changed.constFind(u"LockedHint"_s);
    if (hint == changed.constEnd()) {
        return;
    }
    m_hintWasSignalled = true;
    m_lockedHint = hint->toBool();
    if (!m_lockedHint) {
        m_lockRequested = false;
    }
    update();
}

void SessionLockWatcher::busWasLost(const QDBusMessage &)
{
    if (!m_systemBus.isConnected()) {
        dropSession();
    }
    if (!m_sessionBus.isConnected()) {
        m_savers.clear();
        m_lockRequested = false;
    }
    update();
}

void SessionLockWatcher::update()
{
    const bool isLocked = m_lockRequested || m_lockedHint || m_savers.values().contains(true);
    if (isLocked != m_locked) {
        m_locked = isLocked;
        Q_EMIT lockedChanged(isLocked);
    }
}

} // namespace corvane
