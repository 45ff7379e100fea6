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

/// Keeps online calendars fresh: it decides when the event store is asked to look for news, and has the
/// lessons loaded anew when there are some. Main thread only.
class CalendarRefresher final : public QObject {
    Q_OBJECT

public:
    /// `store` and `watcher` are borrowed. `reloadLessons` starts a load and returns at once.
    CalendarRefresher(EventStore &store, const SystemWatcher &watcher, std::function<void()> reloadLessons,
                      QObject *parent = nullptr);

    /// Asks for news now: called at the start of the program and when the teacher wants the lessons loaded
    /// anew. From then on it asks by itself, on waking, when the network is back, and `interval` after it
    /// asked last. The interval does not count sleep, and what was missed in it is not made up.
    void refresh();

    static constexpr Seconds interval{300};

    /// News that come within so long of the first lead to one load, at its end.
    static constexpr Seconds gathering{1};

private:
    void ask(CalendarRefresh kind);
    static QCoro::Task<void> refreshRegularly(QPointer<CalendarRefresher> self);
    static QCoro::Task<void> reloadSoon(QPointer<CalendarRefresher> self);
    void handleNews();

    EventStore &m_store;
    std::function<void()> m_reloadLessons;
    Seconds m_nextRefresh{}; ///< as uptime() counts
    bool m_isRegular = false;
    bool m_willReload = false;
};

} // namespace corvane
