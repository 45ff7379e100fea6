// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <coroutine>
#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// A notification centre that keeps its requests in memory and shows nothing. It keeps the port's promises
/// and records what it was asked; a request without an identifier ends the test.
class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    FakeUserNotificationCenter() = default;
    ~FakeUserNotificationCenter() override;
    FakeUserNotificationCenter(const FakeUserNotificationCenter &) = delete;
    FakeUserNotificationCenter &operator=(const FakeUserNotificationCenter &) = delete;

    /// What the next requests for authorisation answer.
    std::expected<bool, Failure> authorization = true;
    /// Set: what the next calls of that kind fail with, without doing anything.
    std::optional<Failure> pendingFailure;
    std::optional<Failure> removalFailure;
    std::optional<Failure> addFailure;
    /// How many more requests are added before `addFailure` holds.
    int addsBeforeFailure = 0;

    /// The requests that were added and neither replaced nor taken back, in the order of their adding; also
    /// those whose moment is over.
    std::vector<NotificationRequest> requests;

    /// What was asked, in order, when it was asked: "authorize", "pending", "remove " and the identifiers
    /// joined by ", ", "add " and the identifier.
    QStringList calls;

    /// From now on each call waits for release() before it is carried out, as with an agent that hangs.
    void hold() { m_holds = true; }
    /// Carries out the first call that waits; those made from now on still wait.
    void releaseOne();
    /// Carries out what waits, in order, and from now on each call at once.
    void release();
    /// How many calls wait.
    [[nodiscard]] std::size_t waitingCount() const { return m_waiting.size(); }

    /// The identifiers of `requests`.
    [[nodiscard]] QStringList identifiers() const;

    QCoro::Task<std::expected<bool, Failure>> requestAuthorization() override;
    QCoro::Task<std::expected<QStringList, Failure>> pendingNotificationRequests() override;
    QCoro::Task<std::expected<void, Failure>>
    removePendingNotificationRequests(QStringList identifiers) override;
    QCoro::Task<std::expected<void, Failure>> add(NotificationRequest request) override;

private:
    struct Turn;

    bool m_holds = false;
    std::vector<std::coroutine_handle<>> m_waiting;
};

} // namespace corvane
