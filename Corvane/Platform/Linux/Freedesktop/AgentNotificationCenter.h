// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QDBusConnection>

#include <chrono>
#include <expected>
#include <memory>

namespace corvane {

/// Dated notifications kept and shown by Quillet's own agent, a program that the session bus starts when it
/// is spoken to: Linux has no service that keeps them for a program that does not run. Main thread only; all
/// calls are asynchronous.
///
/// Notifications are granted where a notification server answers or can be started, unless the desktop's own
/// switch has those of Quillet off. A server that is slow to answer is a server: the agent tries it again at
/// the moment of each notification.
class AgentNotificationCenter final : public UserNotificationCenter {
public:
    /// How long each may take to answer.
    struct Timeouts {
        std::chrono::milliseconds bus;
        std::chrono::milliseconds server;
        std::chrono::milliseconds agent;
    };
    static constexpr Timeouts defaultTimeouts{std::chrono::seconds(5), std::chrono::seconds(5),
                                              std::chrono::seconds(15)};

    /// Speaks to nobody yet.
    explicit AgentNotificationCenter(QDBusConnection sessionBus, Timeouts timeouts = defaultTimeouts);
    /// Calls under way still come to their ends.
    ~AgentNotificationCenter() override;

    /// Fails where there is no session bus.
    QCoro::Task<std::expected<bool, Failure>> requestAuthorization() override;
    QCoro::Task<std::expected<QStringList, Failure>> pendingNotificationRequests() override;
    QCoro::Task<std::expected<void, Failure>>
    removePendingNotificationRequests(QStringList identifiers) override;
    QCoro::Task<std::expected<void, Failure>> add(NotificationRequest request) override;

private:
    struct Link;

    std::shared_ptr<Link> m_link;
};

} // namespace corvane
