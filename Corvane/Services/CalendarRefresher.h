// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotask.h>

#include <QObject>
#include <QPointer>

#include <functional>

namespace corvane {

/// Decides when to ask servers for new events, and reloads the lessons when there are any. Main thread only.
class CalendarRefresher final : public QObject {
    Q_OBJECT

public:
    /// Borrows `store` and `watcher`. `reloadLessons` starts a load and returns at once.
    CalendarRefresher(EventStore &store, const SystemWatcher &watcher, std::function<void()> reloadLessons,
                      QObject *parent = nullptr);

    /// Asks for news now: called at the program's start and when the teacher reloads the lessons. The first
    /// call also starts regular requests, `interval` after the last request of any kind; the interval
    /// excludes sleep, and missed requests are not made up for. Waking and the return of the network trigger
    /// a request, too.
    void refresh();

    static constexpr Seconds interval{300};

    /// News within this time of the first leads to one load, at its end.
    static constexpr Seconds gathering{1};

private:
    void ask(CalendarRefresh kind);
    static QCoro::Task<void> refreshRegularly(QPointer<CalendarRefresher> self);
    static QCoro::Task<void> reloadSoon(QPointer<CalendarRefresher> self);
    void handleNews();

    EventStore &m_store;
    std::function<void()> m_reloadLessons;
    Seconds m_nextRefresh{}; ///< in uptime()
    bool m_isRegular = false;
    bool m_willReload = false;
};

} // namespace corvane
