// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServiceClient.h"

#include "Corvane/Platform/Linux/EvolutionData/ServiceRegistry.h"
#include "Corvane/Platform/Linux/Waiting/GioCall.h"
#include "Corvane/Utilities/Spawn.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// In seconds; an hour further from UTC than any place on earth.
constexpr qint64 furthestFromUtc = 15 * qint64{3600};
/// How many series are fetched at the same time.
constexpr std::size_t fetchesAtATime = 8;

/// Series, and events whose start the service cannot read: no interval finds them.
constexpr auto haveNoInterval = "(or (has-recurrences?) (not (has-start?)))";

/// Matches events that overlap the interval, and those close to it, because the service takes floating times
/// as UTC.
QByteArray overlaps(DateInterval interval)
{
    const auto text = [](Date date, qint64 later) {
        const auto seconds = static_cast<qint64>(std::floor(secondsSince1970(date))) + later;
        return QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc())
            .toString(u"yyyyMMdd'T'hhmmss'Z'"_s)
            .toLatin1();
    };
    return "(occur-in-time-range? (make-time \"" + text(interval.start, -furthestFromUtc) +
           "\") (make-time \"" + text(interval.end, furthestFromUtc) + "\"))";
}

using Flag = std::shared_ptr<std::atomic<bool>>;

} // namespace

/// Shared by the client and the signals of a view, however long either lives.
struct ServiceClient::Watch {
    DateInterval span;
    int number = 0;
    std::atomic<quint64> changes = 0;
    /// Until then the service reports no change.
    std::atomic<bool> isComplete = false;
    /// Main thread only; resolved once the watch is complete.
    Pending<bool> made;
    /// Called on the main thread.
    std::function<void()> onChange;

    static void noteChange(ECalClientView *, gpointer, gpointer data)
    {
        const auto watch = *static_cast<std::shared_ptr<Watch> *>(data);
        ++watch->changes;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [watch] { watch->onChange(); }, Qt::QueuedConnection);
    }

    static void noteComplete(ECalClientView *, const GError *error, gpointer data)
    {
        const auto watch = *static_cast<std::shared_ptr<Watch> *>(data);
        watch->isComplete = error == nullptr;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [watch] { watch->made.resolve(true); }, Qt::QueuedConnection);
    }

    /// Makes the view on a GLib thread, because these calls have no form that does not block.
    static void make(GTask *task, gpointer, gpointer data, GCancellable *cancellable)
    {
        const auto &[client, watch] =
            *static_cast<std::pair<GObjectRef<ECalClient>, std::shared_ptr<Watch>> *>(data);
        const QByteArray query = QByteArray("(or ") + haveNoInterval + ' ' + overlaps(watch->span) + ')';
        GError *error = nullptr;
        ECalClientView *view = nullptr;
        if (e_cal_client_get_view_sync(client.get(), query.constData(), &view, cancellable, &error) ==
            FALSE) {
            g_task_return_error(task, error);
            return;
        }
        const auto connect = [view, watch = watch](const char *signal, GCallback handler) {
            g_signal_connect_data(
                view, signal, handler, new std::shared_ptr<Watch>(watch),
                [](gpointer shared, GClosure *) { delete static_cast<std::shared_ptr<Watch> *>(shared); },
                GConnectFlags{});
        };
        connect("objects-added", G_CALLBACK(&Watch::noteChange));
        connect("objects-modified", G_CALLBACK(&Watch::noteChange));
        connect("objects-removed", G_CALLBACK(&Watch::noteChange));
        connect("complete", G_CALLBACK(&Watch::noteComplete));
        e_cal_client_view_set_flags(view, E_CAL_CLIENT_VIEW_FLAGS_NONE, &error);
        if (error == nullptr) {
            e_cal_client_view_start(view, &error);
        }
        if (error != nullptr) {
            g_object_unref(view);
            g_task_return_error(task, error);
            return;
        }
        g_task_return_pointer(task, view, g_object_unref);
    }
};

ServiceClient::ServiceClient(GObjectRef<ECalClient> client) : m_client(std::move(client))
{
    g_signal_connect_data(
        m_client.get(), "backend-died",
        G_CALLBACK(+[](EClient *, gpointer flag) { *static_cast<Flag *>(flag)->get() = true; }),
        new Flag(m_isDead), [](gpointer flag, GClosure *) { delete static_cast<Flag *>(flag); },
        GConnectFlags{});
}

ServiceClient::~ServiceClient()
{
    close();
}

QCoro::Task<std::expected<ServiceClient::Opened, QString>> ServiceClient::open(GObjectRef<ESource> source,
                                                                               std::function<void()> onChange)
{
    const auto connecting = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
        e_cal_client_connect(source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, static_cast<guint32>(-1), nullptr,
                             callback, data);
    });
    co_await connecting.untilResolved();
    GError *error = nullptr;
    EClient *client = e_cal_client_connect_finish(connecting.value().get(), &error);
    if (client == nullptr) {
        co_return std::unexpected(messageOf(error));
    }
    auto made = std::make_shared<ServiceClient>(GObjectRef<ECalClient>::adopt(E_CAL_CLIENT(client)));
    made->m_onChange = std::move(onChange);
    co_return Opened{made};
}

// The components.

QCoro::Task<ServiceClient::Listing> ServiceClient::singles(std::shared_ptr<ServiceClient> self,
                                                           DateInterval interval)
{
    // The first condition excludes series before the service would walk through them: a rule without end
    // keeps it busy for hours, and the whole calendar with it. The last one must follow the interval: only
    // then does the service look the interval up in its index instead of testing each event.
    return list(std::move(self),
                QByteArray("(and (not (has-recurrences?)) ") + overlaps(interval) + " (has-start?))");
}

QCoro::Task<ServiceClient::Listing> ServiceClient::series(std::shared_ptr<ServiceClient> self)
{
    return list(std::move(self), haveNoInterval);
}

QCoro::Task<ServiceClient::Listing> ServiceClient::list(std::shared_ptr<ServiceClient> self, QByteArray query)
{
    const auto listing = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
        e_cal_client_get_object_list(self->m_client.get(), query.constData(), self->m_cancellable.get(),
                                     callback, data);
    });
    co_await listing.untilResolved();
    GError *error = nullptr;
    GSList *objects = nullptr;
    e_cal_client_get_object_list_finish(self->m_client.get(), listing.value().get(), &objects, &error);
    // Some versions of the library report an empty list as a failure, but without an error.
    if (error != nullptr) {
        co_return std::unexpected(messageOf(error));
    }
    Components components;
    for (GSList *item = objects; item != nullptr; item = item->next) {
        components.push_back(GObjectRef<ICalComponent>::adopt(static_cast<ICalComponent *>(item->data)));
    }
    g_slist_free(objects);
    co_return components;
}

QCoro::Task<ServiceClient::Listing> ServiceClient::components(std::shared_ptr<ServiceClient> self,
                                                              std::set<QByteArray> uids)
{
    Components components;
    std::optional<QString> failure;
    auto next = uids.begin();
    while (next != uids.end()) {
        std::vector<Pending<GObjectRef<GAsyncResult>>> calls;
        for (; next != uids.end() && calls.size() < fetchesAtATime; ++next) {
            calls.push_back(startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
                e_cal_client_get_objects_for_uid(self->m_client.get(), next->constData(),
                                                 self->m_cancellable.get(), callback, data);
            }));
        }
        for (const auto &call : calls) {
            co_await call.untilResolved();
            GSList *objects = nullptr;
            GError *error = nullptr;
            e_cal_client_get_objects_for_uid_finish(self->m_client.get(), call.value().get(), &objects,
                                                    &error);
            if (g_error_matches(error, E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND) != FALSE) {
                g_clear_error(&error);
            }
            if (error != nullptr) {
                failure = messageOf(error);
            }
            for (GSList *item = objects; item != nullptr; item = item->next) {
                components.push_back(GObjectRef<ICalComponent>::share(
                    e_cal_component_get_icalcomponent(static_cast<ECalComponent *>(item->data))));
            }
            g_slist_free_full(objects, g_object_unref);
        }
    }
    if (failure) {
        co_return std::unexpected(*failure);
    }
    co_return components;
}

// The zones.

QCoro::Task<void> ServiceClient::bringZones(std::shared_ptr<ServiceClient> self,
                                            std::set<QByteArray> identifiers)
{
    for (const QByteArray &tzid : identifiers) {
        if (e_timezone_cache_get_timezone(E_TIMEZONE_CACHE(self->m_client.get()), tzid.constData()) !=
            nullptr) {
            continue;
        }
        const auto call = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
            e_cal_client_get_timezone(self->m_client.get(), tzid.constData(), self->m_cancellable.get(),
                                      callback, data);
        });
        co_await call.untilResolved();
        ICalTimezone *zone = nullptr;
        // An unknown zone counts as the user's own.
        e_cal_client_get_timezone_finish(self->m_client.get(), call.value().get(), &zone, nullptr);
    }
}

FindZone ServiceClient::customZone() const
{
    // Releases the client on the main thread, wherever its last user runs.
    g_object_ref(m_client.get());
    const std::shared_ptr<ECalClient> shared(m_client.get(), [](ECalClient *last) {
        g_idle_add(
            [](gpointer object) -> gboolean {
                g_object_unref(object);
                return G_SOURCE_REMOVE;
            },
            last);
    });
    return [shared](const char *tzid) {
        return e_timezone_cache_get_timezone(E_TIMEZONE_CACHE(shared.get()), tzid);
    };
}

// The watch.

std::optional<Pending<bool>> ServiceClient::beginWatch(const std::shared_ptr<ServiceClient> &self,
                                                       DateInterval span)
{
    const bool isBeingMade = self->m_making && self->m_making->first == span;
    const bool isMade = self->m_watch && self->m_watch->span == span;
    if (isBeingMade || isMade) {
        return std::nullopt;
    }
    Pending<bool> made;
    self->m_making.emplace(span, made);
    spawn(makeWatch(self, span, made));
    return made;
}

QCoro::Task<void> ServiceClient::makeWatch(std::shared_ptr<ServiceClient> self, DateInterval span,
                                           Pending<bool> made)
{
    const auto watch = std::make_shared<Watch>();
    watch->span = span;
    watch->number = ++self->m_watchCount;
    watch->made = made;
    watch->onChange = self->m_onChange;
    const auto making = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
        using Arguments = std::pair<GObjectRef<ECalClient>, std::shared_ptr<Watch>>;
        GTask *task = g_task_new(nullptr, self->m_cancellable.get(), callback, data);
        g_task_set_task_data(task, new Arguments(self->m_client, watch),
                             [](gpointer arguments) { delete static_cast<Arguments *>(arguments); });
        g_task_run_in_thread(task, &Watch::make);
        g_object_unref(task);
    });
    co_await making.untilResolved();
    auto view = GObjectRef<ECalClientView>::adopt(
        static_cast<ECalClientView *>(g_task_propagate_pointer(G_TASK(making.value().get()), nullptr)));
    if (self->m_making && self->m_making->first == span) {
        self->m_making.reset();
    }
    if (view) {
        self->m_view = std::move(view);
        self->m_watch = watch;
    } else {
        made.resolve(true);
    }
}

std::optional<QByteArray> ServiceClient::version(DateInterval span) const
{
    if (!m_watch || m_watch->span != span || !m_watch->isComplete) {
        return std::nullopt;
    }
    return QByteArray::number(m_watch->number) + '.' + QByteArray::number(m_watch->changes.load());
}

// The server.

bool ServiceClient::canRefresh() const
{
    return e_client_check_refresh_supported(E_CLIENT(m_client.get())) != FALSE;
}

QCoro::Task<bool> ServiceClient::refresh()
{
    const auto refreshing = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
        e_client_refresh(E_CLIENT(m_client.get()), m_cancellable.get(), callback, data);
    });
    co_await refreshing.untilResolved();
    co_return e_client_refresh_finish(E_CLIENT(m_client.get()), refreshing.value().get(), nullptr) != FALSE;
}

} // namespace corvane
