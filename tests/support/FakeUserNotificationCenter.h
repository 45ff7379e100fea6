// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <coroutine>
#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// A notification centre that keeps its requests in memory and shows nothing. It fulfils the port's contract
/// and records the calls; a request without an identifier ends the test program.
class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    FakeUserNotificationCenter() = default;
    ~FakeUserNotificationCenter() override;
    FakeUserNotificationCenter(const FakeUserNotificationCenter &) = delete;
    FakeUserNotificationCenter &operator=(const FakeUserNotificationCenter &) = delete;

    /// The answer to the next requests for authorisation.
    std::expected<bool, Failure> authorization = true;
    /// When set, calls of that kind fail with this and change nothing.
    std::optional<Failure> pendingFailure;
    std::optional<Failure> removalFailure;
    std::optional<Failure> addFailure;
    /// How many more requests are added before `addFailure` applies.
    int addsBeforeFailure = 0;

    /// The requests that were added and neither replaced nor removed, in the order of addition, including
    /// those whose fire date has passed.
    std::vector<NotificationRequest> requests;

    /// All calls, recorded when made, in order: "authorize", "pending", "remove " and the identifiers joined
    /// by commas, "add " and the identifier.
    QStringList calls;

    /// From now on each call waits for release() before it takes effect, as with an agent that hangs.
    void hold() { m_holds = true; }
    /// Executes the first waiting call; later calls still wait.
    void releaseOne();
    /// Executes the waiting calls in order; later calls are executed at once.
    void release();
    /// The number of waiting calls.
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
