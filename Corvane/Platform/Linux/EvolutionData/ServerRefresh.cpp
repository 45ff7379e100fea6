// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServerRefresh.h"

#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace corvane {

namespace {

/// The pause after a failed attempt; each further failure doubles it, at most maximumDoublings times.
constexpr std::chrono::seconds shortestPause = 2min;
constexpr int maximumDoublings = 5;

} // namespace

void ServerRefresh::ask(const std::shared_ptr<RefreshableClient> &client, CalendarRefresh kind)
{
    if (kind == CalendarRefresh::wished) {
        m_next = uptime();
        m_failures = 0;
    }
    m_isWaitingForClient = !client || client->isDead();
    if (!m_isWaitingForClient && !m_isRunning && m_next <= uptime() && client->canRefresh()) {
        spawn(run(shared_from_this(), client));
    }
}

void ServerRefresh::clientOpened(const std::shared_ptr<RefreshableClient> &client)
{
    if (m_isWaitingForClient) {
        ask(client, CalendarRefresh::wished);
    }
}

QCoro::Task<void> ServerRefresh::run(std::shared_ptr<ServerRefresh> self,
                                     std::shared_ptr<RefreshableClient> client)
{
    self->m_isRunning = true;
    const bool isAsked = co_await client->refresh();
    self->m_isRunning = false;
    if (isAsked) {
        self->m_failures = 0;
        co_return;
    }
    self->m_next = uptime() + shortestPause * (1 << self->m_failures);
    self->m_failures = std::min(self->m_failures + 1, maximumDoublings);
}

} // namespace corvane
