// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"
#include "tests/adapters/RecordingAgent.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <memory>
#include <utility>

namespace corvane {

/// The notification centre with a notification server and an agent on a bus of their own. A test class
/// derives from it.
class AgentNotificationRoom {
protected:
    /// A notification server that does nothing but answer, fail or hang.
    class NotificationServer final : public QDBusVirtualObject {
    public:
        enum class Kind { answers, knowsNothing, hangs };

        NotificationServer(QDBusConnection bus, Kind kind) : m_bus(std::move(bus)), m_kind(kind)
        {
            if (!m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this) ||
                !m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"))) {
                qFatal("the notification server cannot take its place on the bus");
            }
        }
        ~NotificationServer() override
        {
            m_bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
        }

        int asked = 0;

        [[nodiscard]] QString introspect(const QString &) const override { return {}; }
        bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
        {
            ++asked;
            switch (m_kind) {
            case Kind::answers:
                return connection.send(
                    message.createReply(QVariantList{QStringLiteral("server"), QStringLiteral("test"),
                                                     QStringLiteral("1"), QStringLiteral("1.2")}));
            case Kind::knowsNothing:
                return false;
            case Kind::hangs:
                return true;
            }
            Q_UNREACHABLE();
        }

    private:
        QDBusConnection m_bus;
        Kind m_kind;
    };

    [[nodiscard]] static NotificationRequest request(const QString &identifier)
    {
        return {.identifier = identifier,
                .title = QStringLiteral("Quillet: join now"),
                .body = QStringLiteral("Join 王 <b>now</b>."),
                .categoryIdentifier = QStringLiteral("quillet.lesson"),
                .fireDate = dateSince1970(4000000000.75),
                .expirationDate = dateSince1970(4000000030.25)};
    }

    void begin() { m_bus = std::make_unique<PrivateBus>(); }

    void end()
    {
        m_center.reset();
        m_server.reset();
        m_agent.reset();
        for (; m_connections > 0; --m_connections) {
            QDBusConnection::disconnectFromBus(QString::number(m_connections));
        }
        m_bus.reset();
    }

    /// A new connection to the bus.
    [[nodiscard]] QDBusConnection connection()
    {
        return QDBusConnection::connectToBus(m_bus->address(), QString::number(++m_connections));
    }

    void startAgent() { m_agent = std::make_unique<RecordingAgent>(connection()); }

    void startServer(NotificationServer::Kind kind)
    {
        m_server = std::make_unique<NotificationServer>(connection(), kind);
    }

    /// The centre under test, created by the first call.
    [[nodiscard]] AgentNotificationCenter &
    center(AgentNotificationCenter::Timeouts timeouts = AgentNotificationCenter::defaultTimeouts)
    {
        if (!m_center) {
            m_center = std::make_unique<AgentNotificationCenter>(connection(), timeouts);
        }
        return *m_center;
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<RecordingAgent> m_agent;
    std::unique_ptr<NotificationServer> m_server;
    std::unique_ptr<AgentNotificationCenter> m_center;

private:
    int m_connections = 0;
};

} // namespace corvane
