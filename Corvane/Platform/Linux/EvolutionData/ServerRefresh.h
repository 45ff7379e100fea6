// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/RefreshableClient.h"
#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotask.h>

#include <memory>

namespace corvane {

/// Makes the calendar service ask the server of one calendar for news: never twice at once, and less and
/// less often while it fails. Main thread only; shared by the coroutines.
class ServerRefresh : public std::enable_shared_from_this<ServerRefresh> {
public:
    /// If `client` is null or dead, the request waits for the next client.
    void ask(const std::shared_ptr<RefreshableClient> &client, CalendarRefresh kind);
    void clientOpened(const std::shared_ptr<RefreshableClient> &client);

private:
    static QCoro::Task<void> run(std::shared_ptr<ServerRefresh> self,
                                 std::shared_ptr<RefreshableClient> client);

    bool m_isWaitingForClient = false;
    bool m_isRunning = false;
    int m_failures = 0;
    Seconds m_next{0}; ///< by uptime()
};

} // namespace corvane
