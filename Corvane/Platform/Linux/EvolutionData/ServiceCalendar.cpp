// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServiceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"
#include "Corvane/Platform/Linux/EvolutionData/ServiceComponents.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// How long the first reading of a calendar waits for the watch for changes before it goes on without it.
constexpr auto watchTime = 1000ms;
/// Services that may leave out changed instances are asked for each series separately, unless there are more
/// series than this.
constexpr std::size_t maximumSingleFetches = 1'000;
/// After this time the series are fetched again even if the watch reports no change.
constexpr auto seriesRefetchInterval = 10min;
/// After this time the service is asked again even if the watch reports no change: it may hang.
constexpr auto knownTime = 5min;
/// The service first looks for a stored password: only a wait that lasts for several readings is reported.
constexpr int lastingPasswordWaits = 2;
constexpr int lastingConnections = 2;

CalendarError passwordError()
{
    return {CalendarStatus::Condition::awaitsPassword, u"password"_s, u"its account waits for a password"_s};
}

CalendarError queryError(const QString &reason)
{
    return {CalendarStatus::Condition::silent, u"query"_s, reason};
}

} // namespace

ServiceCalendar::ServiceCalendar(std::shared_ptr<CalendarServices> services, const ServiceEntry &entry)
    : SourceCalendar(services, identifierPrefix + QString::fromUtf8(entry.uid))
    , m_isLocal(entry.isLocal)
    , m_expander(std::make_shared<CalendarExpander>(std::move(services)))
{
    update(entry);
}

ServiceCalendar::~ServiceCalendar() = default;

void ServiceCalendar::update(const ServiceEntry &entry)
{
    m_source = entry.source;
    rename(entry.name, entry.account);
}

void ServiceCalendar::close()
{
    SourceCalendar::close();
    m_expander->cancel();
    if (m_client) {
        m_client->close();
    }
}

// Open.

QCoro::Task<std::optional<CalendarError>> ServiceCalendar::open(std::shared_ptr<ServiceCalendar> self)
{
    if (self->m_client && !self->m_client->isDead()) {
        co_return std::nullopt;
    }
    if (!self->m_opening) {
        if (self->m_client) {
            self->log(u"calendar opened again name=\"%1\" reason=\"the calendar service died\""_s.arg(
                logText(self->status().name)));
        }
        self->m_client.reset();
        self->m_opening.emplace();
        spawn(openClient(self, *self->m_opening));
    }
    const auto opening = *self->m_opening;
    co_await opening.untilResolved();
    co_return opening.value();
}

QCoro::Task<void> ServiceCalendar::openClient(std::shared_ptr<ServiceCalendar> self,
                                              Pending<std::optional<CalendarError>> opening)
{
    const std::weak_ptr<SourceCalendar> weak = self->weak_from_this();
    const auto onChange = [weak] {
        const auto calendar = std::static_pointer_cast<ServiceCalendar>(weak.lock());
        if (calendar && !calendar->isClosed()) {
            calendar->services().announceNews();
        }
    };
    if (!self->m_lostRules) {
        self->m_lostRules = std::make_shared<LostRules>(onChange);
    }
    auto client = co_await ServiceClient::open(self->m_source, onChange);
    std::optional<CalendarError> error;
    if (client) {
        self->m_client = std::move(client->client);
        ++self->m_clientNumber;
        if (self->isClosed()) {
            self->m_client->close();
        }
        self->m_refresh->clientOpened(self->m_client);
    } else {
        error = CalendarError{CalendarStatus::Condition::unopened, u"open"_s, client.error()};
    }
    self->m_opening.reset();
    opening.resolve(error);
}

void ServiceCalendar::notePassword()
{
    switch (e_source_get_connection_status(m_source.get())) {
    case E_SOURCE_CONNECTION_STATUS_AWAITING_CREDENTIALS:
        ++m_passwordWaits;
        m_connections = 0;
        break;
    case E_SOURCE_CONNECTION_STATUS_CONNECTED:
        // Between two attempts the service briefly seems to be connected.
        if (++m_connections >= lastingConnections) {
            m_passwordWaits = 0;
        }
        break;
    case E_SOURCE_CONNECTION_STATUS_DISCONNECTED:
    case E_SOURCE_CONNECTION_STATUS_CONNECTING:
    case E_SOURCE_CONNECTION_STATUS_SSL_FAILED:
        break;
    }
}

bool ServiceCalendar::awaitsPassword() const
{
    return e_source_get_connection_status(m_source.get()) == E_SOURCE_CONNECTION_STATUS_AWAITING_CREDENTIALS;
}

// Read.

QCoro::Task<SourceCalendar::Reading> ServiceCalendar::read(CalendarQuestion question)
{
    Reading reading = co_await readOnce(question);
    const bool isLost = !reading && (reading.error().step == u"query" || reading.error().step == u"open");
    if (isLost && !isClosed()) {
        // The service may have died since the last reading; the next call starts it again.
        log(u"calendar opened again name=\"%1\" step=\"%2\" reason=\"%3\""_s.arg(
            logText(status().name), reading.error().step, logText(reading.error().reason)));
        m_client.reset();
        reading = co_await readOnce(question);
    }
    if (!reading && reading.error().step == u"query") {
        m_client.reset();
    }
    co_return reading;
}

QCoro::Task<SourceCalendar::Reading> ServiceCalendar::readOnce(CalendarQuestion question)
{
    const auto self = std::static_pointer_cast<ServiceCalendar>(shared_from_this());
    if (const auto error = co_await open(self)) {
        co_return std::unexpected(*error);
    }
    const Client client = m_client;
    const DateInterval span = rememberedSpan(question);
    if (const auto watched = ServiceClient::beginWatch(client, span)) {
        [[maybe_unused]] const bool isWatched =
            co_await watched->until(QDeadlineTimer(watchTime, Qt::PreciseTimer));
    }
    // The next reading sees whatever changes from here on.
    const QByteArray versionNow = version(client, question);
    const int wishes = m_wishes;
    if (isKnown(question, versionNow)) {
        CalendarReading known = m_known->reading; // GCC 12 would move from the member
        co_return known;
    }
    const bool areSeriesKnown = m_series && m_series->question == question && !versionNow.isEmpty() &&
                                m_series->version == versionNow && !m_series->refetch.hasExpired();
    auto fetched = co_await fetch(client, question, !areSeriesKnown);
    if (!fetched) {
        co_return std::unexpected(fetched.error());
    }
    if (fetched->singles.empty() && fetched->series.empty() && !areSeriesKnown && awaitsPassword()) {
        co_return std::unexpected(passwordError());
    }
    auto singles = co_await expandSingles(client, question, std::move(fetched->singles));
    if (!singles) {
        co_return std::unexpected(singles.error());
    }
    if (!areSeriesKnown) {
        m_series.reset();
        const auto whole = std::make_shared<Fetched>(std::move(*fetched));
        const auto expanded = co_await expandSeries(client, question, whole, versionNow);
        if (!expanded) {
            co_return std::unexpected(expanded.error());
        }
    }
    const bool isWhole = singles->isComplete && m_series && m_series->version == versionNow;
    CalendarReading reading = combined(std::move(*singles), versionNow);
    notePassword();
    if (m_passwordWaits >= lastingPasswordWaits) {
        reading.outdated = passwordError();
    }
    m_known.reset();
    if (isWhole && m_passwordWaits == 0 && wishes == m_wishes) {
        m_known = Known{question, reading, uptime() + knownTime};
    }
    client->watchLostRules(m_lostRules);
    co_return reading;
}

/// What `singles` and the series contain together.
CalendarReading ServiceCalendar::combined(Expansion singles, const QByteArray &version) const
{
    CalendarReading reading{.events = std::move(singles.events),
                            .skippedEvents = std::move(singles.skippedEvents),
                            .unknownZones = std::move(singles.unknownZones),
                            .version = version,
                            .askedAt = currentDate()};
    if (m_series) {
        std::ranges::copy(m_series->events, std::back_inserter(reading.events));
        std::ranges::copy(m_series->skippedEvents, std::back_inserter(reading.skippedEvents));
        std::ranges::copy(m_series->unknownZones,
                          std::inserter(reading.unknownZones, reading.unknownZones.end()));
    }
    return reading;
}

bool ServiceCalendar::isKnown(const CalendarQuestion &question, const QByteArray &version) const
{
    return m_known && !version.isEmpty() && m_known->reading.version == version &&
           m_known->question == question && uptime() < m_known->expiry && !awaitsPassword();
}

QByteArray ServiceCalendar::version(const Client &client, const CalendarQuestion &question) const
{
    const auto watched = client->version(rememberedSpan(question));
    return watched ? QByteArray::number(m_clientNumber) + '.' + *watched + '.' +
                         QByteArray::number(m_lostRules->changes())
                   : QByteArray();
}

// First step: fetch.

QCoro::Task<std::expected<ServiceCalendar::Fetched, CalendarError>>
ServiceCalendar::fetch(Client client, CalendarQuestion question, bool withSeries)
{
    auto fetched = std::make_shared<Fetched>();
    fetched->lostRules = withSeries ? m_lostRules->identifiers() : m_series->lostRules;
    auto singles = co_await ServiceClient::singles(client, question.interval);
    if (!singles) {
        co_return std::unexpected(queryError(singles.error()));
    }
    fetched->singles = std::move(*singles);
    if (withSeries) {
        auto series = co_await ServiceClient::series(client);
        if (!series) {
            co_return std::unexpected(queryError(series.error()));
        }
        fetched->series = std::move(*series);
        co_await completeSeries(client, fetched);
        co_await addLostRules(client, fetched);
    }
    removeComponents(fetched->singles, fetched->lostRules);
    std::set<QByteArray> zones = zonesOf(fetched->singles);
    zones.merge(zonesOf(fetched->series));
    co_await ServiceClient::bringZones(client, std::move(zones));
    co_return std::move(*fetched);
}

/// Second step: other services may list a changed instance as a single event. Fetches the whole series.
QCoro::Task<void> ServiceCalendar::completeSeries(Client client, std::shared_ptr<Fetched> fetched)
{
    const std::set<QByteArray> identifiers = identifiersOf(fetched->series);
    if (m_isLocal || identifiers.empty() || identifiers.size() > maximumSingleFetches) {
        co_return;
    }
    auto whole = co_await ServiceClient::components(client, identifiers);
    if (!whole || whole->empty()) {
        fetched->isWhole = whole.has_value();
        co_return;
    }
    removeComponents(fetched->singles, identifiers);
    fetched->series = std::move(*whole);
}

/// Fetches the series that the service lists as single events. If that fails, they stay single events.
QCoro::Task<void> ServiceCalendar::addLostRules(Client client, std::shared_ptr<Fetched> fetched)
{
    if (fetched->lostRules.empty()) {
        co_return;
    }
    auto found = co_await ServiceClient::components(client, fetched->lostRules);
    if (!found) {
        fetched->lostRules.clear();
        fetched->isWhole = false;
        co_return;
    }
    removeComponents(fetched->series, fetched->lostRules);
    std::ranges::move(*found, std::back_inserter(fetched->series));
}

// Third step: expand. Single events first, so that they are available whatever the series cost.

QCoro::Task<std::expected<Expansion, CalendarError>>
ServiceCalendar::expandSingles(Client client, CalendarQuestion question, Components components)
{
    if (components.empty()) {
        co_return Expansion{};
    }
    CalendarExpander::Work work = [components = std::move(components), findZone = client->customZone()](
                                      const ExpansionRequest &request, ExpansionControl &control) {
        return CalendarExpander::Outcome{expandGroups(groupsOf(components, findZone), request, control), {}};
    };
    auto outcome = co_await CalendarExpander::expand(m_expander, question, std::move(work));
    if (!outcome) {
        co_return std::unexpected(outcome.error());
    }
    co_return std::move(outcome->expansion);
}

QCoro::Task<std::expected<void, CalendarError>>
ServiceCalendar::expandSeries(Client client, CalendarQuestion question, std::shared_ptr<Fetched> fetched,
                              QByteArray version)
{
    CalendarExpander::Work work = [components = std::move(fetched->series), findZone = client->customZone(),
                                   span = rememberedSpan(question)](const ExpansionRequest &request,
                                                                    ExpansionControl &control) {
        const std::vector<ComponentGroup> groups = groupsOf(components, findZone);
        CalendarExpander::Outcome outcome{expandGroups(groups, request, control), {}};
        if (outcome.expansion.isComplete) {
            outcome.text = captureSpan(groups, {}, request, span, control);
        }
        return outcome;
    };
    auto outcome = co_await CalendarExpander::expand(m_expander, question, std::move(work));
    if (!outcome) {
        co_return std::unexpected(outcome.error());
    }
    Expansion &expansion = outcome->expansion;
    std::ranges::move(expansion.unfinishedSeries, std::back_inserter(expansion.skippedEvents));
    m_series = Series{question,
                      std::move(expansion.events),
                      std::move(expansion.skippedEvents),
                      std::move(expansion.unknownZones),
                      std::move(outcome->text),
                      std::move(fetched->lostRules),
                      expansion.isComplete && fetched->isWhole ? version : QByteArray(),
                      QDeadlineTimer(seriesRefetchInterval)};
    co_return {};
}

// Remember.

QCoro::Task<std::optional<QByteArray>> ServiceCalendar::capture(CalendarQuestion span)
{
    const Client client = m_client;
    if (!client || client->isDead() || !m_series || !m_series->text ||
        rememberedSpan(m_series->question) != span.interval) {
        co_return std::nullopt;
    }
    const QByteArray seriesText = *m_series->text;
    const std::set<QByteArray> lostRules = m_series->lostRules;
    auto singles = co_await ServiceClient::singles(client, span.interval);
    if (!singles) {
        co_return std::nullopt;
    }
    removeComponents(*singles, lostRules);
    co_await ServiceClient::bringZones(client, zonesOf(*singles));
    const auto writing = startOnPool(services().workers.threads(),
                                     [components = std::move(*singles), findZone = client->customZone(),
                                      seriesText, span]() -> std::optional<QByteArray> {
                                         ExpansionControl control;
                                         const ExpansionRequest request{span.interval, span.timeZoneId};
                                         const auto text = captureSpan(groupsOf(components, findZone), {},
                                                                       request, span.interval, control);
                                         return text ? std::optional(*text + seriesText) : std::nullopt;
                                     });
    co_await writing.untilResolved();
    co_return *writing.value();
}

void ServiceCalendar::refresh(CalendarRefresh kind)
{
    if (kind == CalendarRefresh::wished) {
        askAnew();
    }
    m_refresh->ask(m_client, kind);
}

} // namespace corvane
