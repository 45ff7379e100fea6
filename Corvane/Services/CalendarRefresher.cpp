// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarRefresher.h"

#include "Corvane/Utilities/Spawn.h"

#include <utility>

namespace corvane {

CalendarRefresher::CalendarRefresher(EventStore &store, const SystemWatcher &watcher,
                                     std::function<void()> reloadLessons, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_reloadLessons(std::move(reloadLessons))
{
    connect(&watcher, &SystemWatcher::woke, this, &CalendarRefresher::refresh);
    connect(&watcher, &SystemWatcher::networkCameBack, this, &CalendarRefresher::refresh);
    connect(&store.monitor(), &CalendarMonitor::newsArrived, this, &CalendarRefresher::handleNews);
}

void CalendarRefresher::refresh()
{
    ask(CalendarRefresh::wished);
}

void CalendarRefresher::ask(CalendarRefresh kind)
{
    m_nextRefresh = uptime() + interval;
    m_store.refresh(kind);
    if (!std::exchange(m_isRegular, true)) {
        spawn(refreshRegularly(this));
    }
}

QCoro::Task<void> CalendarRefresher::refreshRegularly(QPointer<CalendarRefresher> self)
{
    while (self != nullptr) {
        const Seconds remaining = self->m_nextRefresh - uptime();
        if (remaining <= Seconds::zero()) {
            self->ask(CalendarRefresh::regular);
        } else {
            co_await wait(remaining);
        }
    }
}

void CalendarRefresher::handleNews()
{
    if (!std::exchange(m_willReload, true)) {
        spawn(reloadSoon(this));
    }
}

QCoro::Task<void> CalendarRefresher::reloadSoon(QPointer<CalendarRefresher> self)
{
    co_await wait(gathering);
    if (self != nullptr) {
        // Cleared first, so that news during the load leads to another one.
        self->m_willReload = false;
        self->m_reloadLessons();
    }
}

} // namespace corvane
