// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Platform/Linux/EvolutionData/LostRules.h"
#include "Corvane/Platform/Linux/EvolutionData/RefreshableClient.h"
#include "Corvane/Platform/Linux/EvolutionData/ServiceComponents.h"
#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/Spawn.h"

#include <qcoro/qcorotask.h>

#include <QByteArray>
#include <QString>

#include <atomic>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace corvane {

/// An open connection to one calendar of the service. Main thread only, unless stated otherwise. Calls take
/// as long as the service does, and end at once when the client is closed.
class ServiceClient final : public RefreshableClient, public std::enable_shared_from_this<ServiceClient> {
public:
    /// GCC 12 cannot await a std::expected of a pointer.
    struct Opened {
        std::shared_ptr<ServiceClient> client;
    };
    /// Opens the calendar; fails with the service's message. `onChange` runs on the main thread after a
    /// watched change.
    static QCoro::Task<std::expected<Opened, QString>> open(GObjectRef<ESource> source,
                                                            std::function<void()> onChange);

    explicit ServiceClient(GObjectRef<ECalClient> client);
    ~ServiceClient() override;
    ServiceClient(const ServiceClient &) = delete;
    ServiceClient &operator=(const ServiceClient &) = delete;

    /// Whether the service has died.
    [[nodiscard]] bool isDead() const override { return *m_isDead; }
    void close() { g_cancellable_cancel(m_cancellable.get()); }

    using Listing = std::expected<Components, QString>;

    /// The single events that overlap `interval`, and some close to it.
    static QCoro::Task<Listing> singles(std::shared_ptr<ServiceClient> self, DateInterval interval);
    /// All series, and events whose start the service cannot read.
    static QCoro::Task<Listing> series(std::shared_ptr<ServiceClient> self);
    /// All components with these identifiers. A missing one is not a failure.
    static QCoro::Task<Listing> components(std::shared_ptr<ServiceClient> self, std::set<QByteArray> uids);
    /// Loads the zones into the client's cache, where customZone() finds them.
    static QCoro::Task<void> bringZones(std::shared_ptr<ServiceClient> self,
                                        std::set<QByteArray> identifiers);

    /// Returns a function that finds zones in the cache, on any thread, and that keeps the cache alive.
    [[nodiscard]] FindZone customZone() const;

    /// Starts to watch the series and the single events of `span`. Resolves when changes are reported from
    /// then on, or when that has failed. None if they are already watched, or about to be.
    [[nodiscard]] static std::optional<Pending<bool>> beginWatch(const std::shared_ptr<ServiceClient> &self,
                                                                 DateInterval span);
    /// Changes with the watched events, and with the watch; none if `span` is not watched.
    [[nodiscard]] std::optional<QByteArray> version(DateInterval span) const;

    /// Lets `rules` watch this calendar.
    void watchLostRules(std::shared_ptr<LostRules> rules) const
    {
        spawn(LostRules::watch(std::move(rules), m_client, m_cancellable));
    }

    [[nodiscard]] bool canRefresh() const override;
    QCoro::Task<bool> refresh() override;

private:
    struct Watch;
    static QCoro::Task<void> makeWatch(std::shared_ptr<ServiceClient> self, DateInterval span,
                                       Pending<bool> made);
    static QCoro::Task<Listing> list(std::shared_ptr<ServiceClient> self, QByteArray query);

    GObjectRef<ECalClient> m_client;
    GObjectRef<GCancellable> m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
    std::shared_ptr<std::atomic<bool>> m_isDead = std::make_shared<std::atomic<bool>>(false);
    std::function<void()> m_onChange;
    GObjectRef<ECalClientView> m_view;
    std::shared_ptr<Watch> m_watch;
    int m_watchCount = 0;
    /// The watch that is being made.
    std::optional<std::pair<DateInterval, Pending<bool>>> m_making;
};

} // namespace corvane
