// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QDBusConnection>

#include <chrono>
#include <expected>
#include <memory>

namespace corvane {

/// Dated notifications that Quillet's own agent keeps and shows: Linux has no service that keeps them for a
/// program that does not run. The session bus starts the agent when it is called. Main thread only; all calls
/// are asynchronous.
///
/// Notifications are authorized if a notification server answers or can be started, unless the desktop's own
/// switch turns off those of Quillet. A server that is slow to answer counts: the agent tries it again when a
/// notification is due.
class AgentNotificationCenter final : public UserNotificationCenter {
public:
    /// The time limits of the answers.
    struct Timeouts {
        std::chrono::milliseconds bus;
        std::chrono::milliseconds server;
        std::chrono::milliseconds agent;
    };
    static constexpr Timeouts defaultTimeouts{std::chrono::seconds(5), std::chrono::seconds(5),
                                              std::chrono::seconds(15)};

    /// Makes no call yet.
    explicit AgentNotificationCenter(QDBusConnection sessionBus, Timeouts timeouts = defaultTimeouts);
    /// Calls in progress still complete.
    ~AgentNotificationCenter() override;

    /// Fails without a session bus.
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
