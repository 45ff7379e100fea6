// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/agent/AgentRoom.h"

#include <QDBusMessage>
#include <QDebug>
#include <QObject>
#include <QStringList>

#include <memory>

namespace corvane {

/// The real agent on a bus of its own. A test class derives from it for each subject of the agent.
class NotificationAgentFixture : public QObject {
    Q_OBJECT

protected:
    static constexpr int agentTimeout = 20'000; // milliseconds

    [[nodiscard]] static PendingRequest agentRequest(const QString &name, qint64 fireDate,
                                                     qint64 helpsFor = 240)
    {
        return {QStringLiteral("quillet.backup.start.%1.%2").arg(fireDate).arg(name),
                name,
                name + QStringLiteral(" & <co> starts in 20 seconds."),
                QStringLiteral("quillet.lesson"),
                fireDate,
                fireDate + helpsFor};
    }

    /// What a server that plays sounds itself can do.
    static inline const QStringList plain{QStringLiteral("body"), QStringLiteral("sound")};

    [[nodiscard]] static bool isReply(const QDBusMessage &message)
    {
        if (message.type() != QDBusMessage::ReplyMessage) {
            qWarning() << message.errorName() << message.errorMessage();
        }
        return message.type() == QDBusMessage::ReplyMessage;
    }

    std::unique_ptr<AgentRoom> m_room;

private Q_SLOTS:
    void init() { m_room = std::make_unique<AgentRoom>(); }
    void cleanup() { m_room.reset(); }
};

} // namespace corvane
