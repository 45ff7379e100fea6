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

/// A notification server on its own bus connection. It behaves as the test sets it and records what it was
/// asked to show. It leaves the bus in its destructor, or earlier by leave(), as if it had crashed.
class RecordingServer final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    enum class Behaviour { shows, refuses, saysNothing, leaves };

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
        // A predecessor's name may not be released yet, so queue for it.
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

    /// Leaves the bus without answering pending calls.
    void leave()
    {
        // The connection ends with its last reference.
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(m_name);
    }

    /// Processes everything that clients, even those that have left, sent so far. False if the bus does not
    /// answer.
    [[nodiscard]] bool drain()
    {
        const auto call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        // The bus's answer arrives after everything that was queued for this connection before.
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
    bool isAsleep = false; ///< does not even answer GetCapabilities()
    /// Gives up the name, for another server, and stays on the bus.
    void releaseName()
    {
        m_bus.interface()->unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    }

    int asked = 0; ///< calls of GetCapabilities()
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
        case Behaviour::saysNothing:
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
