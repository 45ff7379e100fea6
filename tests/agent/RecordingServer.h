// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTest>
#include <QVariantMap>

#include <vector>

namespace corvane {

/// A notification server of the test's own, on a connection of its own, that behaves as it is told and
/// records what it was asked to show. It leaves the bus with the object, or as if it had crashed.
class RecordingServer final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    enum class Behaviour { shows, refuses, says_nothing, leaves };

    struct Shown {
        qint64 arrival = 0; ///< milliseconds since 1970
        QString application;
        QString icon;
        QString summary;
        QString body;
        QVariantMap hints;
    };

    RecordingServer(const QString &busAddress, QStringList capabilities)
        : m_name(QStringLiteral("recording-server-%1").arg(++number))
        , m_bus(QDBusConnection::connectToBus(busAddress, m_name))
        , m_capabilities(std::move(capabilities))
    {
        // The name of one that has just left may still be on its way back.
        const bool isThere =
            m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                 QDBusConnection::ExportAllSlots) &&
            m_bus.interface()->registerService(QStringLiteral("org.freedesktop.Notifications"),
                                               QDBusConnectionInterface::QueueService) !=
                QDBusConnectionInterface::ServiceNotRegistered;
        if (!isThere) {
            qFatal("the recording server does not come up");
        }
    }
    ~RecordingServer() override { leave(); }

    /// Goes, without an answer to what is open.
    void leave()
    {
        // The connection ends with its last reference.
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(m_name);
    }

    /// Takes everything that was sent to it so far by who has left the bus. False when the bus does not
    /// answer.
    [[nodiscard]] bool drain()
    {
        const auto call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        // The bus's answer comes behind what it had for this connection before.
        QDBusPendingCallWatcher watcher(m_bus.asyncCall(call, 20'000));
        bool isDrained = false;
        connect(&watcher, &QDBusPendingCallWatcher::finished, this, [&] { isDrained = true; });
        return QTest::qWaitFor([&] { return isDrained; }, 20'000) && !watcher.isError();
    }

    [[nodiscard]] int shownWith(const QString &summary) const
    {
        int count = 0;
        for (const Shown &one : shown) {
            count += one.summary == summary ? 1 : 0;
        }
        return count;
    }

    Behaviour behaviour = Behaviour::shows;
    bool isAsleep = false; ///< does not even tell its capabilities
    /// Lets another one take the name, and lives on.
    void releaseName()
    {
        m_bus.interface()->unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    }

    int asked = 0; ///< how often it was asked for its capabilities
    std::vector<Shown> shown;

public Q_SLOTS:
    QStringList GetCapabilities()
    {
        ++asked;
        if (isAsleep) {
            setDelayedReply(true);
        }
        return m_capabilities;
    }

    uint Notify(const QString &application, uint, const QString &icon, const QString &summary,
                const QString &body, const QStringList &, const QVariantMap &hints, int)
    {
        shown.push_back({QDateTime::currentMSecsSinceEpoch(), application, icon, summary, body, hints});
        switch (behaviour) {
        case Behaviour::shows:
            break;
        case Behaviour::refuses:
            sendErrorReply(QStringLiteral("org.freedesktop.Notifications.Error.ExcessNotificationGeneration"),
                           QStringLiteral("too many"));
            break;
        case Behaviour::says_nothing:
            setDelayedReply(true);
            break;
        case Behaviour::leaves:
            setDelayedReply(true);
            QMetaObject::invokeMethod(this, &RecordingServer::leave, Qt::QueuedConnection);
            break;
        }
        return static_cast<uint>(shown.size());
    }

private:
    static inline int number = 0;
    QString m_name;
    QDBusConnection m_bus;
    QStringList m_capabilities;
};

} // namespace corvane
