// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"

#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Utilities/Spawn.h"

#include <QPointer>

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// What a request and its query may take together, so that a load of lessons ends within five seconds.
constexpr auto loadBudget = 4500ms;
/// What the request may take of that, so that time is left for the query.
constexpr auto requestBudget = 3500ms;
/// A query that follows a request within this time belongs to the same load.
constexpr auto sameLoad = 500ms;
/// The least time for a query that had to wait for others.
constexpr auto minimumQueryBudget = 200ms;

using Granted = std::expected<bool, Failure>;
using Events = std::expected<std::vector<CalendarEvent>, Failure>;

bool isBefore(const CalendarEvent &left, const CalendarEvent &right)
{
    return std::tie(left.startDate, left.endDate, left.title) <
           std::tie(right.startDate, right.endDate, right.title);
}

} // namespace

class MergedEventStore::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl(CalendarMonitor &monitor, std::vector<std::shared_ptr<CalendarSource>> sources,
         TimeZoneId timeZoneId)
        : m_monitor(&monitor)
        , m_sources(std::move(sources))
        , m_timeZoneId(std::move(timeZoneId))
    {
    }

    [[nodiscard]] bool isGranted() const { return m_isGranted; }

    void close()
    {
        for (const auto &source : m_sources) {
            source->close();
        }
    }

    void refresh(CalendarRefresh kind)
    {
        for (const auto &source : m_sources) {
            source->refresh(kind);
        }
    }

    Pending<Granted> request()
    {
        if (m_request) {
            return *m_request;
        }
        m_request.emplace();
        const Pending<Granted> answer = *m_request;
        spawn(runRequest(shared_from_this()));
        return answer;
    }

    Pending<Events> ask(DateInterval interval)
    {
        if (!m_queries.empty() && m_queries.back().interval == interval) {
            return m_queries.back().answer;
        }
        QDeadlineTimer deadline(loadBudget, Qt::PreciseTimer);
        if (!m_sameLoad.hasExpired()) {
            deadline = std::min(deadline, m_loadEnd);
        }
        m_queries.push_back({interval, deadline, {}});
        const Pending<Events> answer = m_queries.back().answer;
        if (!m_isQuerying) {
            spawn(runQueries(shared_from_this()));
        }
        return answer;
    }

private:
    struct Query {
        DateInterval interval;
        QDeadlineTimer deadline;
        Pending<Events> answer;
    };

    // The coroutines own what they work on, so that it outlives the store while they wait. They are spawned:
    // if they were stored in what they own, neither would ever be destroyed.
    static QCoro::Task<void> runRequest(std::shared_ptr<Impl> self)
    {
        const QDeadlineTimer loadEnd(loadBudget, Qt::PreciseTimer);
        const QDeadlineTimer deadline(requestBudget, Qt::PreciseTimer);
        Granted granted = false;
        for (const auto &source : self->m_sources) {
            Granted isThere = co_await source->checkAvailability(deadline);
            if (isThere && *isThere) {
                granted = true;
                break;
            }
            if (!isThere) {
                granted = std::move(isThere);
            }
        }
        self->m_isGranted = granted.value_or(false);
        self->m_loadEnd = loadEnd;
        self->m_sameLoad = QDeadlineTimer(sameLoad, Qt::PreciseTimer);
        const Pending<Granted> answer = *self->m_request;
        self->m_request.reset();
        answer.resolve(std::move(granted));
    }

    static QCoro::Task<void> runQueries(std::shared_ptr<Impl> self)
    {
        self->m_isQuerying = true;
        while (!self->m_queries.empty()) {
            // Taken off the queue before it is answered, because the receiver may ask again at once.
            const Query query = self->m_queries.front();
            const QDeadlineTimer deadline =
                std::max(query.deadline, QDeadlineTimer(minimumQueryBudget, Qt::PreciseTimer));
            const CalendarQuestion question{query.interval, self->m_timeZoneId()};
            CalendarAnswers all;
            std::vector<QCoro::Task<CalendarAnswers>> tasks;
            const bool isViewed = self->m_monitor != nullptr && self->m_monitor->isViewed();
            for (const auto &source : self->m_sources) {
                if (isViewed) {
                    source->askAnew();
                }
                tasks.push_back(source->query(question, deadline));
            }
            for (auto &task : tasks) {
                CalendarAnswers answers = co_await task;
                all.isThere = all.isThere || answers.isThere;
                all.answered += answers.answered;
                all.silent += answers.silent;
                if (answers.silent > 0) {
                    all.error = answers.error;
                }
                std::ranges::move(answers.events, std::back_inserter(all.events));
                std::ranges::move(answers.calendars, std::back_inserter(all.calendars));
            }
            self->m_queries.pop_front();
            query.answer.resolve(self->conclude(std::move(all)));
        }
        self->m_isQuerying = false;
    }

    Events conclude(CalendarAnswers all)
    {
        if (m_monitor != nullptr) {
            m_monitor->setCalendars(std::move(all.calendars), all.error);
        }
        if (all.silent > 0 && all.answered == 0) {
            return std::unexpected(Failure{all.error});
        }
        if (!all.isThere) {
            // The next load asks again: a service or a folder may have been added.
            m_isGranted = false;
            return std::unexpected(
                Failure{u"There is neither a calendar service nor a folder of calendars."_s});
        }
        std::ranges::stable_sort(all.events, isBefore);
        if (m_monitor != nullptr) {
            m_monitor->setEvents(all.events);
        }
        return std::move(all.events);
    }

    QPointer<CalendarMonitor> m_monitor;
    std::vector<std::shared_ptr<CalendarSource>> m_sources;
    TimeZoneId m_timeZoneId;
    bool m_isGranted = false;
    QDeadlineTimer m_loadEnd;
    QDeadlineTimer m_sameLoad{0};
    std::optional<Pending<Granted>> m_request;
    std::deque<Query> m_queries;
    bool m_isQuerying = false;
};

MergedEventStore::MergedEventStore(std::vector<std::shared_ptr<CalendarSource>> sources,
                                   TimeZoneId timeZoneId)
    : m_impl(std::make_shared<Impl>(m_monitor, std::move(sources), std::move(timeZoneId)))
{
}

MergedEventStore::~MergedEventStore()
{
    m_impl->close();
}

CalendarAuthorization MergedEventStore::authorizationStatus() const
{
    return m_impl->isGranted() ? CalendarAuthorization::fullAccess : CalendarAuthorization::notDetermined;
}

QCoro::Task<std::expected<bool, Failure>> MergedEventStore::requestFullAccessToEvents()
{
    const Pending<Granted> answer = m_impl->request();
    co_await answer.untilResolved();
    co_return answer.value();
}

QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>>
MergedEventStore::events(DateInterval interval)
{
    const Pending<Events> answer = m_impl->ask(interval);
    co_await answer.untilResolved();
    co_return answer.value();
}

void MergedEventStore::refresh(CalendarRefresh kind)
{
    m_impl->refresh(kind);
}

} // namespace corvane
