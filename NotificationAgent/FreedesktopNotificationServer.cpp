// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/FreedesktopNotificationServer.h"

#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/PlainText.h"
#include "NotificationAgent/BusCall.h"
#include "NotificationAgent/CanberraNotificationSound.h"
#include "NotificationAgent/NotificationSound.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto serviceName = "org.freedesktop.Notifications"_L1;
constexpr auto objectPath = "/org/freedesktop/Notifications"_L1;

int milliseconds(std::chrono::milliseconds duration)
{
    return static_cast<int>(duration.count());
}

QString words(const QDBusMessage &error)
{
    return error.errorName() + u": "_s + error.errorMessage();
}

} // namespace

FreedesktopNotificationServer::FreedesktopNotificationServer(QDBusConnection sessionBus,
                                                             NotificationSound &sound, Timeouts timeouts,
                                                             QObject *parent)
    : NotificationServer(parent)
    , m_bus(std::move(sessionBus))
    , m_sound(sound)
    , m_timeouts(timeouts)
{
    m_arrivals.setConnection(m_bus);
    m_arrivals.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_arrivals.addWatchedService(serviceName);
    m_departure.setConnection(m_bus);
    m_departure.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_arrivals, &QDBusServiceWatcher::serviceRegistered, this, &NotificationServer::arrived);
    connect(&m_departure, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString &name) {
        if (name == m_server) {
            m_departure.removeWatchedService(m_server);
            m_server.clear();
            Q_EMIT left();
        }
    });
}

void FreedesktopNotificationServer::ask()
{
    const auto call =
        QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, u"GetCapabilities"_s);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, milliseconds(m_timeouts.asking)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        handleCapabilities(watcher->reply());
    });
}

void FreedesktopNotificationServer::handleCapabilities(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage) {
        Q_EMIT answered(false, words(reply));
        return;
    }
    m_capabilities = reply.arguments().value(0).toStringList();
    // Not every version of Qt reports the sender of a reply.
    auto call = busCall(u"GetNameOwner"_s);
    call << QString(serviceName);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, milliseconds(m_timeouts.asking)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        handleOwner(watcher->reply());
    });
}

void FreedesktopNotificationServer::handleOwner(const QDBusMessage &reply)
{
    const QString owner = reply.arguments().value(0).toString();
    if (reply.type() != QDBusMessage::ReplyMessage || owner.isEmpty()) {
        Q_EMIT answered(false, words(reply));
        return;
    }
    if (m_server != owner) {
        if (!m_server.isEmpty()) {
            m_departure.removeWatchedService(m_server);
            Q_EMIT replaced();
        }
        m_server = owner;
        m_departure.addWatchedService(m_server);
    }
    Q_EMIT answered(true, {});
}

QVariantList FreedesktopNotificationServer::notifyArguments(const PendingRequest &request,
                                                            const QStringList &capabilities)
{
    const bool takesMarkup = capabilities.contains(u"body-markup"_s);
    QVariantMap hints{
        {u"urgency"_s, QVariant::fromValue(uchar{1})}, // normal: a critical one would stay on screen
        {u"desktop-entry"_s, QString(names::application)}};
    if (request.isQuiet) {
        hints.insert(u"suppress-sound"_s, true);
    } else {
        hints.insert(u"sound-name"_s, QString::fromLatin1(CanberraNotificationSound::eventName));
    }
    if (!request.categoryIdentifier.isEmpty()) {
        hints.insert(u"category"_s, request.categoryIdentifier);
    }
    // Sanitised here too, because any program on the bus can add a request.
    const QString body = plainText(request.body);
    return {u"Quillet"_s,
            0U, // replaces no notification
            QString(names::application),
            plainText(request.title),
            takesMarkup ? body.toHtmlEscaped() : body,
            QStringList(), // no actions
            hints,
            -1}; // the server's default time on screen
}

void FreedesktopNotificationServer::deliver(const PendingRequest &request)
{
    auto call = QDBusMessage::createMethodCall(m_server, objectPath, serviceName, u"Notify"_s);
    call.setArguments(notifyArguments(request, m_capabilities));
    auto *watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(call, milliseconds(m_timeouts.delivering)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, isQuiet = request.isQuiet] {
        watcher->deleteLater();
        handleReply(watcher->reply(), isQuiet);
    });
}

void FreedesktopNotificationServer::handleReply(const QDBusMessage &reply, bool isQuiet)
{
    if (reply.type() == QDBusMessage::ReplyMessage) {
        if (!isQuiet && !m_capabilities.contains(u"sound"_s)) {
            m_sound.play();
        }
        Q_EMIT finished(Outcome::shown, {});
        return;
    }
    // Sent by the bus if the server has left, and by the library on a timeout.
    const QString name = reply.errorName();
    if (name == "org.freedesktop.DBus.Error.NoReply"_L1 || name == "org.freedesktop.DBus.Error.Timeout"_L1 ||
        name == "org.freedesktop.DBus.Error.TimedOut"_L1) {
        checkServerPresence(words(reply));
        return;
    }
    Q_EMIT finished(Outcome::notShown, words(reply));
}

void FreedesktopNotificationServer::checkServerPresence(const QString &reason)
{
    if (m_server.isEmpty()) {
        Q_EMIT finished(Outcome::notShown, reason);
        return;
    }
    auto call = busCall(u"NameHasOwner"_s);
    call << m_server;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, milliseconds(m_timeouts.asking)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, reason] {
        watcher->deleteLater();
        const QDBusReply<bool> isThere = watcher->reply();
        const bool isGone = m_server.isEmpty() || (isThere.isValid() && !isThere.value());
        Q_EMIT finished(isGone ? Outcome::notShown : Outcome::unknown, reason);
    });
}

} // namespace corvane
