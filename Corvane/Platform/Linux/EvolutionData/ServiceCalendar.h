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

/// A calendar of the desktop's calendar service. It stays open between readings; its series are fetched and
/// expanded only when one of them changed.
class ServiceCalendar final : public SourceCalendar {
public:
    ServiceCalendar(std::shared_ptr<CalendarServices> services, const ServiceEntry &entry);
    ~ServiceCalendar() override;

    /// Begins the identifiers of the service's calendars.
    static constexpr QLatin1StringView identifierPrefix{"service:"};

    void update(const ServiceEntry &entry);
    [[nodiscard]] ESource *source() const { return m_source.get(); }

    /// Ends once it is open, or with the reason why it cannot be opened.
    static QCoro::Task<std::optional<CalendarError>> open(std::shared_ptr<ServiceCalendar> self);

    /// Asks its server for news; as soon as it is open, where it is not.
    void refresh(CalendarRefresh kind);

    void close() override;

protected:
    QCoro::Task<Reading> read(CalendarQuestion question) override;
    QCoro::Task<std::optional<QByteArray>> capture(CalendarQuestion span) override;

private:
    /// The occurrences of the series, as long as none of them changes.
    struct Series {
        CalendarQuestion question;
        std::vector<CalendarEvent> events;
        std::vector<SkippedEvent> skippedEvents;
        std::set<QByteArray> unknownZones;
        /// Calendar text of those that matter in the remembered span; nothing where it could not be had.
        std::optional<QByteArray> text;
        QByteArray version;
        QDeadlineTimer refetch;
    };
    using Client = std::shared_ptr<ServiceClient>;
    struct Fetched {
        Components singles;
        Components series;
    };

    static QCoro::Task<void> openClient(std::shared_ptr<ServiceCalendar> self,
                                        Pending<std::optional<CalendarError>> opening);
    QCoro::Task<Reading> readOnce(CalendarQuestion question);
    QCoro::Task<std::expected<Fetched, CalendarError>> fetch(Client client, CalendarQuestion question,
                                                             bool withSeries);
    QCoro::Task<void> completeSeries(Client client, std::shared_ptr<Fetched> fetched);
    QCoro::Task<std::expected<Expansion, CalendarError>>
    expandSingles(Client client, CalendarQuestion question, Components components);
    QCoro::Task<std::expected<void, CalendarError>> expandSeries(Client client, CalendarQuestion question,
                                                                 Components components, QByteArray version);
    [[nodiscard]] QByteArray version(const Client &client, const CalendarQuestion &question) const;
    [[nodiscard]] bool awaitsPassword() const;
    void notePassword();

    GObjectRef<ESource> m_source;
    bool m_isLocal;
    std::shared_ptr<CalendarExpander> m_expander;
    Client m_client;
    /// Tells the client of today from earlier ones.
    quint64 m_clientNumber = 0;
    std::optional<Pending<std::optional<CalendarError>>> m_opening;
    std::optional<Series> m_series;
    int m_passwordWaits = 0;
    int m_connections = 0;

    std::shared_ptr<ServerRefresh> m_refresh = std::make_shared<ServerRefresh>();
};

} // namespace corvane
