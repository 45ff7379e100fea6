// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Platform/Linux/EvolutionData/RefreshableClient.h"
#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Utilities/DayCalendar.h"

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

using Components = std::vector<GObjectRef<ICalComponent>>;

/// An open connection to one calendar of the service. Main thread only, except where it says otherwise; its
/// calls take as long as the service takes, and end at once when it closes.
class ServiceClient final : public RefreshableClient, public std::enable_shared_from_this<ServiceClient> {
public:
    /// GCC 12 cannot await an expected pointer.
    struct Opened {
        std::shared_ptr<ServiceClient> client;
    };
    /// Opens the calendar; fails with the service's words.
    static QCoro::Task<std::expected<Opened, QString>> open(GObjectRef<ESource> source,
                                                            std::function<void()> onChange);

    explicit ServiceClient(GObjectRef<ECalClient> client);
    ~ServiceClient() override;
    ServiceClient(const ServiceClient &) = delete;
    ServiceClient &operator=(const ServiceClient &) = delete;

    /// The service died.
    [[nodiscard]] bool isDead() const override { return *m_isDead; }
    void close() { g_cancellable_cancel(m_cancellable.get()); }

    using Listing = std::expected<Components, QString>;

    /// The single events that overlap `interval`, and some next to it.
    static QCoro::Task<Listing> singles(std::shared_ptr<ServiceClient> self, DateInterval interval);
    /// All series, and events whose start the service cannot read.
    static QCoro::Task<Listing> series(std::shared_ptr<ServiceClient> self);
    /// All components of these identifiers. One that has gone since is no failure.
    static QCoro::Task<Components> components(std::shared_ptr<ServiceClient> self, std::set<QByteArray> uids);
    /// Brings the zones into the client's cache, where customZone() finds them.
    static QCoro::Task<void> bringZones(std::shared_ptr<ServiceClient> self,
                                        std::set<QByteArray> identifiers);

    /// Finds the zones of the cache, on any thread, as long as it lives.
    [[nodiscard]] std::function<ICalTimezone *(const char *tzid)> customZone() const;

    /// Begins to watch the series and the single events of `span`; resolved when that is done, also where no
    /// watch can be had. Nothing where they are watched, or about to be.
    [[nodiscard]] static std::optional<Pending<bool>> beginWatch(const std::shared_ptr<ServiceClient> &self,
                                                                 DateInterval span);
    /// How often what is watched has changed; nothing where `span` is not watched.
    [[nodiscard]] std::optional<quint64> changes(DateInterval span) const;

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
    /// Begun and not yet done.
    std::optional<std::pair<DateInterval, Pending<bool>>> m_making;
};

} // namespace corvane
