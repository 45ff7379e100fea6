// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/FakeUserNotificationCenter.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane {

/// Makes a call wait for its turn, in the order of the calls.
struct FakeUserNotificationCenter::Turn {
    FakeUserNotificationCenter &center;

    [[nodiscard]] bool await_ready() const noexcept { return !center.m_holds && center.m_waiting.empty(); }
    void await_suspend(std::coroutine_handle<> handle) { center.m_waiting.push_back(handle); }
    void await_resume() const noexcept {}
};

FakeUserNotificationCenter::~FakeUserNotificationCenter()
{
    release();
}

void FakeUserNotificationCenter::releaseOne()
{
    if (m_waiting.empty()) {
        qFatal("no call waits");
    }
    const auto handle = m_waiting.front();
    m_waiting.erase(m_waiting.begin());
    handle.resume();
}

void FakeUserNotificationCenter::release()
{
    m_holds = false;
    while (!m_waiting.empty()) {
        releaseOne();
    }
}

QStringList FakeUserNotificationCenter::identifiers() const
{
    QStringList identifiers;
    for (const NotificationRequest &request : requests) {
        identifiers.append(request.identifier);
    }
    return identifiers;
}

QCoro::Task<std::expected<bool, Failure>> FakeUserNotificationCenter::requestAuthorization()
{
    calls.append(u"authorize"_s);
    co_await Turn{*this};
    const std::expected<bool, Failure> answer = authorization;
    co_return answer;
}

QCoro::Task<std::expected<QStringList, Failure>> FakeUserNotificationCenter::pendingNotificationRequests()
{
    calls.append(u"pending"_s);
    co_await Turn{*this};
    if (pendingFailure) {
        co_return std::unexpected(*pendingFailure);
    }
    QStringList pending;
    for (const NotificationRequest &request : requests) {
        if (std::floor(secondsSince1970(request.fireDate)) > secondsSince1970(currentDate())) {
            pending.append(request.identifier);
        }
    }
    co_return pending;
}

QCoro::Task<std::expected<void, Failure>>
FakeUserNotificationCenter::removePendingNotificationRequests(QStringList identifiers)
{
    calls.append(u"remove "_s + identifiers.join(u", "_s));
    co_await Turn{*this};
    if (removalFailure) {
        co_return std::unexpected(*removalFailure);
    }
    std::erase_if(requests, [&identifiers](const NotificationRequest &request) {
        return identifiers.contains(request.identifier);
    });
    co_return {};
}

QCoro::Task<std::expected<void, Failure>> FakeUserNotificationCenter::add(NotificationRequest request)
{
    if (request.identifier.isEmpty()) {
        qFatal("a notification without an identifier was added");
    }
    calls.append(u"add "_s + request.identifier);
    co_await Turn{*this};
    if (addFailure && addsBeforeFailure-- <= 0) {
        co_return std::unexpected(*addFailure);
    }
    std::erase_if(requests, [&request](const NotificationRequest &earlier) {
        return earlier.identifier == request.identifier;
    });
    requests.push_back(request);
    co_return {};
}

} // namespace corvane
