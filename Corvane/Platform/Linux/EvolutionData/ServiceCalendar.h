// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarExpander.h"
#include "Corvane/Platform/Linux/EvolutionData/ServerRefresh.h"
#include "Corvane/Platform/Linux/EvolutionData/ServiceClient.h"
#include "Corvane/Platform/Linux/EvolutionData/ServiceRegistry.h"
#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include <QDeadlineTimer>

#include <expected>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace corvane {

/// A calendar of the desktop's calendar service. It stays open between readings. While its watch reports no
/// change, the last complete answer is known: the service is asked again only for another question, after a
/// wished refresh() or after five minutes. Series are fetched and expanded again only after a change, for
/// another question, or after ten minutes.
class ServiceCalendar final : public SourceCalendar {
public:
    ServiceCalendar(std::shared_ptr<CalendarServices> services, const ServiceEntry &entry);
    ~ServiceCalendar() override;

    /// The prefix of the identifiers of the service's calendars.
    static constexpr QLatin1StringView identifierPrefix{"service:"};

    void update(const ServiceEntry &entry);
    [[nodiscard]] ESource *source() const { return m_source.get(); }

    /// Opens the calendar unless it is open. None on success, otherwise why it cannot be opened.
    static QCoro::Task<std::optional<CalendarError>> open(std::shared_ptr<ServiceCalendar> self);

    /// The next reading that begins asks the service, even if its last answer is still right.
    void askAnew()
    {
        ++m_wishes;
        m_known.reset();
    }

    /// Asks the calendar's server for news, or does so as soon as the calendar is open. If that is wished,
    /// the next reading asks the service, too.
    void refresh(CalendarRefresh kind);

    void close() override;

protected:
    QCoro::Task<Reading> read(CalendarQuestion question) override;
    QCoro::Task<std::optional<QByteArray>> capture(CalendarQuestion span) override;

private:
    /// The occurrences of the series, valid until one of the series changes.
    struct Series {
        CalendarQuestion question;
        std::vector<CalendarEvent> events;
        std::vector<SkippedEvent> skippedEvents;
        std::set<QByteArray> unknownZones;
        /// Calendar text of those that matter in the remembered span; none if it was not available.
        std::optional<QByteArray> text;
        /// The series among them that the service lists as single events.
        std::set<QByteArray> lostRules;
        QByteArray version;
        QDeadlineTimer refetch;
    };
    /// The last complete reading, valid while the version stays the same, until someone wishes for news.
    struct Known {
        CalendarQuestion question;
        CalendarReading reading;
        Seconds expiry; ///< as uptime
    };
    using Client = std::shared_ptr<ServiceClient>;
    struct Fetched {
        Components singles;
        Components series;
        /// The series that the service lists as single events; they are in `series` only.
        std::set<QByteArray> lostRules;
        /// Whether all series could be fetched.
        bool isWhole = true;
    };

    static QCoro::Task<void> openClient(std::shared_ptr<ServiceCalendar> self,
                                        Pending<std::optional<CalendarError>> opening);
    QCoro::Task<Reading> readOnce(CalendarQuestion question);
    QCoro::Task<std::expected<Fetched, CalendarError>> fetch(Client client, CalendarQuestion question,
                                                             bool withSeries);
    QCoro::Task<void> completeSeries(Client client, std::shared_ptr<Fetched> fetched);
    QCoro::Task<void> addLostRules(Client client, std::shared_ptr<Fetched> fetched);
    QCoro::Task<std::expected<Expansion, CalendarError>>
    expandSingles(Client client, CalendarQuestion question, Components components);
    QCoro::Task<std::expected<void, CalendarError>> expandSeries(Client client, CalendarQuestion question,
                                                                 std::shared_ptr<Fetched> fetched,
                                                                 QByteArray version);
    [[nodiscard]] CalendarReading combined(Expansion singles, const QByteArray &version) const;
    [[nodiscard]] bool isKnown(const CalendarQuestion &question, const QByteArray &version) const;
    [[nodiscard]] QByteArray version(const Client &client, const CalendarQuestion &question) const;
    [[nodiscard]] bool awaitsPassword() const;
    void notePassword();

    GObjectRef<ESource> m_source;
    bool m_isLocal;
    std::shared_ptr<CalendarExpander> m_expander;
    Client m_client;
    /// Counts the clients, so that versions of an earlier one differ.
    quint64 m_clientNumber = 0;
    std::optional<Pending<std::optional<CalendarError>>> m_opening;
    std::optional<Series> m_series;
    std::optional<Known> m_known;
    /// How often someone wished for news: a reading that began before a wish is not kept.
    int m_wishes = 0;
    std::shared_ptr<LostRules> m_lostRules;
    int m_passwordWaits = 0;
    int m_connections = 0;

    std::shared_ptr<ServerRefresh> m_refresh = std::make_shared<ServerRefresh>();
};

} // namespace corvane
