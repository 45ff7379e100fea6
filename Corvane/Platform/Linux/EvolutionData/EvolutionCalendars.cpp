// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"

#include "Corvane/Platform/Linux/EvolutionData/QueryDeadline.h"
#include "Corvane/Platform/Linux/EvolutionData/RememberedCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/ServiceCalendar.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// A calendar that was removed or disabled is forgotten after this time.
constexpr std::chrono::seconds forgettingTime = 1min;
/// How long a query waits for the list of calendars if it knows an earlier one.
constexpr auto listTime = 500ms;

using State = ServiceRegistry::State;

QString didNotAnswer(const QString &reason)
{
    return u"The calendar service did not answer: %1"_s.arg(reason);
}

} // namespace

class EvolutionCalendars::Impl : public std::enable_shared_from_this<Impl> {
public:
    explicit Impl(std::shared_ptr<CalendarServices> services) : m_services(std::move(services)) {}

    void close()
    {
        m_isClosed = true;
        for (const auto &[uid, calendar] : m_calendars) {
            calendar->close();
        }
    }

    void askAnew()
    {
        for (const auto &[uid, calendar] : m_calendars) {
            calendar->askAnew();
        }
    }

    void refresh(CalendarRefresh kind)
    {
        for (const auto &[uid, calendar] : m_calendars) {
            calendar->refresh(kind);
        }
    }

    static QCoro::Task<std::expected<bool, Failure>> checkAvailability(std::shared_ptr<Impl> self,
                                                                       QDeadlineTimer deadline)
    {
        const ServiceRegistry::Found found =
            co_await ServiceRegistry::find(self->m_registry, answerDeadline(deadline));
        self->logService(found);
        if (found.state == State::absent) {
            co_return false;
        }
        if (found.state == State::silent) {
            if (co_await self->m_remembered.areThere(deadline)) {
                co_return true;
            }
            co_return std::unexpected(Failure{didNotAnswer(found.error)});
        }
        self->updateCalendars();
        const std::optional<QString> error = co_await openAny(self, deadline);
        if (error) {
            co_return std::unexpected(Failure{u"No calendar could be opened: %1"_s.arg(*error)});
        }
        co_return true;
    }

    static QCoro::Task<CalendarAnswers> query(std::shared_ptr<Impl> self, CalendarQuestion question,
                                              QDeadlineTimer deadline)
    {
        CalendarAnswers answers;
        const QDeadlineTimer inTime = answerDeadline(deadline);
        const ServiceRegistry::Found found = co_await ServiceRegistry::find(
            self->m_registry, self->m_calendars.empty()
                                  ? inTime
                                  : std::min(inTime, QDeadlineTimer(listTime, Qt::PreciseTimer)));
        self->logService(found);
        if (found.state == State::there) {
            self->updateCalendars();
        }
        // Calendars that are already open may answer even if the list of calendars is unavailable.
        answers.isThere = found.state != State::absent || !self->m_calendars.empty();
        if (found.state == State::silent && self->m_calendars.empty()) {
            co_await self->m_remembered.answer(question, deadline, found.error, answers);
            if (answers.calendars.empty()) {
                answers.silent = 1;
                answers.error = didNotAnswer(found.error);
            }
            co_return answers;
        }
        const std::map<QByteArray, std::shared_ptr<ServiceCalendar>> calendars = self->m_calendars;
        std::vector<QCoro::Task<void>> tasks;
        tasks.reserve(calendars.size());
        for (const auto &[uid, calendar] : calendars) {
            tasks.push_back(SourceCalendar::query(calendar, question, inTime, deadline, answers));
        }
        for (auto &task : tasks) {
            co_await task;
        }
        co_return answers;
    }

private:
    /// None if a calendar is open or remembered, or if there are no calendars; otherwise why none can be
    /// opened.
    static QCoro::Task<std::optional<QString>> openAny(std::shared_ptr<Impl> self, QDeadlineTimer deadline)
    {
        const std::map<QByteArray, std::shared_ptr<ServiceCalendar>> calendars = self->m_calendars;
        if (calendars.empty()) {
            co_return std::nullopt;
        }
        const auto openings = std::make_shared<Openings>(calendars.size());
        for (const auto &[uid, calendar] : calendars) {
            spawn(openOne(calendar, openings));
        }
        const bool isDecided = co_await openings->isAnyOpen.until(answerDeadline(deadline));
        if (isDecided && openings->isAnyOpen.value()) {
            co_return std::nullopt;
        }
        for (const auto &[uid, calendar] : calendars) {
            if (co_await SourceCalendar::hasMemory(calendar, deadline)) {
                co_return std::nullopt;
            }
        }
        co_return isDecided ? openings->error : u"it did not answer in time"_s;
    }

    struct Openings {
        std::size_t pending;
        Pending<bool> isAnyOpen;
        QString error;
    };

    static QCoro::Task<void> openOne(std::shared_ptr<ServiceCalendar> calendar,
                                     std::shared_ptr<Openings> openings)
    {
        const std::optional<CalendarError> error = co_await ServiceCalendar::open(calendar);
        --openings->pending;
        if (error) {
            openings->error = error->reason;
        }
        if (!error || openings->pending == 0) {
            openings->isAnyOpen.resolve(!error);
        }
    }

    void updateCalendars()
    {
        std::map<QByteArray, std::shared_ptr<ServiceCalendar>> enabled;
        for (const ServiceEntry &entry : m_registry->calendars()) {
            const auto known = m_calendars.find(entry.uid);
            std::shared_ptr<ServiceCalendar> calendar;
            if (known != m_calendars.end()) {
                calendar = known->second;
                calendar->update(entry);
            } else {
                calendar = std::make_shared<ServiceCalendar>(m_services, entry);
                calendar->refresh(CalendarRefresh::wished); // as soon as it is open
            }
            enabled.emplace(entry.uid, std::move(calendar));
        }
        for (const auto &[uid, calendar] : m_calendars) {
            if (!enabled.contains(uid)) {
                calendar->close();
                m_removed.try_emplace(uid, calendar, QDeadlineTimer(forgettingTime));
            }
        }
        // A service that has just started may list its accounts before their calendars: forget nothing yet.
        std::erase_if(m_removed, [&enabled](const auto &removed) {
            const auto &[calendar, deadline] = removed.second;
            if (!enabled.contains(removed.first) && deadline.hasExpired()) {
                calendar->forget();
            }
            return enabled.contains(removed.first) || deadline.hasExpired();
        });
        m_calendars = std::move(enabled);
    }

    void logService(const ServiceRegistry::Found &found)
    {
        if (m_lastState == found.state || m_isClosed) {
            return;
        }
        const bool isFirst = !m_lastState;
        m_lastState = found.state;
        switch (found.state) {
        case State::there:
            if (!isFirst) {
                m_services->log(u"calendar service answers"_s);
            }
            break;
        case State::absent:
            m_services->log(u"calendar service absent reason=\"%1\""_s.arg(logText(found.error)));
            break;
        case State::silent:
            m_services->log(u"calendar service did not answer reason=\"%1\""_s.arg(logText(found.error)));
            break;
        }
    }

    std::shared_ptr<CalendarServices> m_services;
    std::shared_ptr<ServiceRegistry> m_registry =
        std::make_shared<ServiceRegistry>([services = m_services] { services->announceNews(); });
    std::map<QByteArray, std::shared_ptr<ServiceCalendar>> m_calendars;
    RememberedCalendars m_remembered{m_services, ServiceCalendar::identifierPrefix};
    /// Calendars that are no longer listed, until they are forgotten.
    std::map<QByteArray, std::pair<std::shared_ptr<ServiceCalendar>, QDeadlineTimer>> m_removed;
    std::optional<State> m_lastState;
    bool m_isClosed = false;
};

EvolutionCalendars::EvolutionCalendars(std::shared_ptr<CalendarServices> services)
    : m_impl(std::make_shared<Impl>(std::move(services)))
{
}

EvolutionCalendars::~EvolutionCalendars()
{
    m_impl->close();
}

QCoro::Task<std::expected<bool, Failure>> EvolutionCalendars::checkAvailability(QDeadlineTimer deadline)
{
    return Impl::checkAvailability(m_impl, deadline);
}

QCoro::Task<CalendarAnswers> EvolutionCalendars::query(CalendarQuestion question, QDeadlineTimer deadline)
{
    return Impl::query(m_impl, std::move(question), deadline);
}

void EvolutionCalendars::askAnew()
{
    m_impl->askAnew();
}

void EvolutionCalendars::refresh(CalendarRefresh kind)
{
    m_impl->refresh(kind);
}

void EvolutionCalendars::close()
{
    m_impl->close();
}

} // namespace corvane
