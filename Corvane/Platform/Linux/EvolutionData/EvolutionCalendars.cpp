// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"

#include "Corvane/Platform/Linux/Pending.h"
#include "Corvane/Utilities/Spawn.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSet>
#include <QTimeZone>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// What is kept of the time limit for drawing the conclusions.
constexpr auto conclusionTime = 300ms;
/// How long the first query of a calendar waits for the watch over its series; it goes on without.
constexpr auto watchTime = 1000ms;
/// Series are fetched one by one from services that may leave out their changed instances; not more than so
/// many, and so many at a time.
constexpr std::size_t maximumSingleFetches = 1'000;
constexpr std::size_t fetchesAtATime = 8;
/// How long a watch over the series is trusted before they are fetched again all the same.
constexpr auto seriesRefetchInterval = 10min;
/// So many components are looked through between two turns of the event loop: about a millisecond.
constexpr std::size_t maximumSortedAtOnce = 300;
/// Expansions that did not end in time may stay behind, but not more than so many.
constexpr int maximumStrayJobs = 2;
constexpr int workerThreads = 4;

/// Seconds; no place on earth is further from UTC, by an hour.
constexpr qint64 furthestFromUtc = 15 * qint64{3600};

constexpr auto seriesQuery = "(has-recurrences?)";

using Components = std::vector<GObjectRef<ICalComponent>>;

QString messageOf(GError *error)
{
    const QString message = error != nullptr ? QString::fromUtf8(error->message) : u"unknown"_s;
    g_clear_error(&error);
    return message;
}

/// The single events that overlap the interval, and those next to it, since the service takes floating times
/// for UTC. Series are kept out by the first condition, before the service would walk through them: a rule
/// without end keeps it busy for hours, and with it the whole calendar.
QByteArray singlesQuery(DateInterval interval)
{
    const auto text = [](Date date, qint64 later) {
        const auto seconds = static_cast<qint64>(std::floor(secondsSince1970(date))) + later;
        return QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc())
            .toString(u"yyyyMMdd'T'hhmmss'Z'"_s)
            .toLatin1();
    };
    return "(and (not (has-recurrences?)) (or (not (has-start?)) (occur-in-time-range? (make-time \"" +
           text(interval.start, -furthestFromUtc) + "\") (make-time \"" +
           text(interval.end, furthestFromUtc) + "\"))))";
}

/// Gives the service's client back on the main thread, wherever the last user of it is.
std::shared_ptr<ECalClient> refReleasedOnMainThread(const GObjectRef<ECalClient> &client)
{
    g_object_ref(client.get());
    return {client.get(), [](ECalClient *last) {
                g_idle_add(
                    [](gpointer object) -> gboolean {
                        g_object_unref(object);
                        return G_SOURCE_REMOVE;
                    },
                    last);
            }};
}

/// A flag that a signal of a GObject sets, however long either of them lives.
using Flag = std::shared_ptr<std::atomic<bool>>;

template <typename Callback>
void setFlagOn(gpointer object, const char *signal, const Flag &flag, Callback callback)
{
    g_signal_connect_data(
        object, signal, reinterpret_cast<GCallback>(callback), new Flag(flag),
        [](gpointer data, GClosure *) { delete static_cast<Flag *>(data); }, GConnectFlags{});
}

struct WatchData {
    GObjectRef<ECalClient> client;
    Flag isStale;
};

/// Makes a view on the series, on a thread of GLib's: its calls block and know no other form.
void makeWatch(GTask *task, gpointer, gpointer data, GCancellable *cancellable)
{
    const auto &watch = *static_cast<WatchData *>(data);
    GError *error = nullptr;
    ECalClientView *view = nullptr;
    if (e_cal_client_get_view_sync(watch.client.get(), seriesQuery, &view, cancellable, &error) == FALSE) {
        g_task_return_error(task, error);
        return;
    }
    const auto objectsChanged =
        +[](ECalClientView *, gpointer, gpointer flag) { *static_cast<Flag *>(flag)->get() = true; };
    for (const char *signal : {"objects-added", "objects-modified", "objects-removed"}) {
        setFlagOn(view, signal, watch.isStale, objectsChanged);
    }
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

/// A calendar of the service, and what is known of it.
struct Calendar {
    GObjectRef<ESource> source;
    QString name;
    bool isLocal = false;

    GObjectRef<ECalClient> client;
    Flag isDead;
    GObjectRef<ECalClientView> watch;
    Flag areSeriesStale;

    /// The occurrences of the series, as long as none of them changes.
    struct Series {
        DateInterval interval;
        QByteArray timeZoneId;
        std::vector<CalendarEvent> events;
        std::vector<SkippedEvent> skippedEvents;
        QDeadlineTimer refetch;
    };
    std::optional<Series> series;

    /// What the last expansions found out about single series, for one interval and time zone.
    DateInterval knownInterval;
    QByteArray knownTimeZoneId;
    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> knownSeries;
    std::set<std::size_t> suspects;

    struct LastAnswer {
        DateInterval interval;
        std::vector<CalendarEvent> events;
    };
    std::optional<LastAnswer> lastAnswer;

    bool isSilent = false;
    QSet<QByteArray> loggedSkips;

    void dropClient()
    {
        watch.reset();
        client.reset();
        series.reset();
    }
};

/// The components of a calendar, and what they name.
struct Sorted {
    Components singles;
    Components series;
    std::set<QByteArray> timeZones;
    /// The identifiers of the series.
    std::set<QByteArray> uids;
};

Sorted sortComponents(Components singles, Components series)
{
    Sorted sorted{std::move(singles), std::move(series), {}, {}};
    for (const auto &component : sorted.singles) {
        sorted.timeZones.merge(timeZoneIdentifiers(component.get()));
    }
    for (const auto &component : sorted.series) {
        sorted.timeZones.merge(timeZoneIdentifiers(component.get()));
        const char *uid = i_cal_component_get_uid(component.get());
        if (uid != nullptr) {
            sorted.uids.insert(uid);
        }
    }
    return sorted;
}

struct Expanded {
    Expansion singles;
    Expansion series;
};

/// Why a calendar gave no answer.
struct CalendarError {
    QString step;
    QString reason;
    bool isTimeout = false;
};

} // namespace

class EvolutionCalendars::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl(DebugLogService &log, TimeZoneId timeZoneId) : m_log(log), m_timeZoneId(std::move(timeZoneId)) {}

    void close()
    {
        m_isClosed = true;
        if (m_cancellable) {
            g_cancellable_cancel(m_cancellable.get());
        }
        for (const auto &control : m_controls) {
            control->cancel();
        }
    }

    enum class Service { there, absent, silent };

    static QCoro::Task<std::expected<bool, Failure>> checkAvailability(std::shared_ptr<Impl> self,
                                                                       QDeadlineTimer deadline)
    {
        const Found found = co_await findService(self, deadline);
        self->logService(found);
        if (found.service == Service::silent) {
            co_return std::unexpected(Failure{u"The calendar service did not answer: %1"_s.arg(found.error)});
        }
        if (found.service == Service::absent) {
            co_return false;
        }
        self->updateCalendars();
        self->m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
        const GObjectRef<GCancellable> cancellable = self->m_cancellable;
        std::vector<QCoro::Task<std::optional<CalendarError>>> tasks;
        for (const auto &[uid, calendar] : self->m_calendars) {
            tasks.push_back(open(self, calendar, cancellable, deadline));
        }
        QString error;
        bool isAnyOpen = tasks.empty();
        for (auto &task : tasks) {
            const std::optional<CalendarError> failure = co_await task;
            isAnyOpen = isAnyOpen || !failure;
            if (failure) {
                error = failure->reason;
            }
        }
        g_cancellable_cancel(cancellable.get());
        if (!isAnyOpen) {
            co_return std::unexpected(Failure{u"No calendar could be opened: %1"_s.arg(error)});
        }
        co_return true;
    }

    static QCoro::Task<CalendarAnswers> query(std::shared_ptr<Impl> self, DateInterval interval,
                                              QDeadlineTimer deadline)
    {
        CalendarAnswers answers;
        const QDeadlineTimer inTime(
            std::max(deadline.remainingTimeAsDuration() - conclusionTime, std::chrono::nanoseconds(50ms)),
            Qt::PreciseTimer);
        const Found found = co_await findService(self, inTime);
        self->logService(found);
        if (found.service == Service::there) {
            self->updateCalendars();
        }
        // Calendars that were open before may answer even where the list of calendars cannot be had.
        answers.isThere = found.service != Service::absent || !self->m_calendars.empty();
        if (found.service == Service::silent && self->m_calendars.empty()) {
            answers.silent = 1;
            answers.error = u"The calendar service did not answer: %1"_s.arg(found.error);
            co_return answers;
        }
        self->m_cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
        const GObjectRef<GCancellable> cancellable = self->m_cancellable;
        std::vector<std::shared_ptr<Calendar>> calendars;
        std::vector<QCoro::Task<std::expected<std::vector<CalendarEvent>, CalendarError>>> tasks;
        const QByteArray timeZoneId = self->m_timeZoneId();
        for (const auto &[uid, calendar] : self->m_calendars) {
            calendars.push_back(calendar);
            tasks.push_back(
                queryCalendar(self, calendar, interval, timeZoneId, cancellable, inTime, deadline));
        }
        for (std::size_t index = 0; index < tasks.size(); ++index) {
            auto events = co_await tasks[index];
            self->conclude(*calendars[index], interval, std::move(events), answers);
        }
        // What still runs is given up.
        g_cancellable_cancel(cancellable.get());
        co_return answers;
    }

private:
    // The list of calendars.

    [[nodiscard]] static bool isBusInReach()
    {
        // Without either of these GLib would start a bus of its own for this program alone.
        return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
               QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
    }

    struct Found {
        Service service;
        /// Why it is not there.
        QString error;
    };

    static QCoro::Task<Found> findService(std::shared_ptr<Impl> self, QDeadlineTimer deadline)
    {
        if (self->m_registry && self->isRegistryEmpty()) {
            // The service is gone, or has come since.
            self->m_registry.reset();
        }
        if (self->m_registry) {
            co_return Found{Service::there, {}};
        }
        if (!isBusInReach()) {
            co_return Found{Service::absent, u"there is no session bus"_s};
        }
        Pending<Found> call;
        if (self->m_registryCall) {
            // A service that hangs keeps this call for half a minute, whatever is done: there is one at a
            // time.
            call = *self->m_registryCall;
        } else {
            self->m_registryCall = call;
            spawn(makeRegistry(self, call));
        }
        if (!co_await call.until(deadline)) {
            co_return Found{Service::silent, u"the list of calendars did not come in time"_s};
        }
        co_return call.value();
    }

    /// Holds what it needs, since its answer may come long after everyone has stopped waiting.
    static QCoro::Task<void> makeRegistry(std::shared_ptr<Impl> self, Pending<Found> call)
    {
        Found found{Service::absent, u"the session bus has none"_s};
        const auto bus = startGioCall([](GAsyncReadyCallback callback, gpointer data) {
            g_bus_get(G_BUS_TYPE_SESSION, nullptr, callback, data);
        });
        co_await bus.untilResolved();
        GError *error = nullptr;
        const auto connection =
            GObjectRef<GDBusConnection>::adopt(g_bus_get_finish(bus.value().get(), &error));
        if (connection) {
            // The end of the bus must not be the end of the program.
            g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
            const auto making = startGioCall([](GAsyncReadyCallback callback, gpointer data) {
                e_source_registry_new(nullptr, callback, data);
            });
            co_await making.untilResolved();
            self->m_registry = GObjectRef<ESourceRegistry>::adopt(
                e_source_registry_new_finish(making.value().get(), &error));
            if (!self->m_registry) {
                if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) ||
                    g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)) {
                    g_clear_error(&error);
                } else {
                    found = {Service::silent, messageOf(std::exchange(error, nullptr))};
                }
            } else if (self->isRegistryEmpty()) {
                // The library makes an empty list where there is no service; a real one is never empty.
                self->m_registry.reset();
            } else {
                found = {Service::there, {}};
            }
        } else {
            found.error = messageOf(std::exchange(error, nullptr));
        }
        self->m_registryCall.reset();
        call.resolve(found);
    }

    [[nodiscard]] bool isRegistryEmpty() const
    {
        GList *sources = e_source_registry_list_sources(m_registry.get(), nullptr);
        const bool isEmpty = sources == nullptr;
        g_list_free_full(sources, g_object_unref);
        return isEmpty;
    }

    void updateCalendars()
    {
        std::map<QByteArray, std::shared_ptr<Calendar>> enabled;
        GList *sources = e_source_registry_list_enabled(m_registry.get(), E_SOURCE_EXTENSION_CALENDAR);
        for (GList *item = sources; item != nullptr; item = item->next) {
            auto *source = static_cast<ESource *>(item->data);
            auto *backend =
                static_cast<ESourceBackend *>(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR));
            const QByteArray backendName(e_source_backend_get_backend_name(backend));
            if (backendName == "contacts" || backendName == "weather") {
                continue;
            }
            const QByteArray uid(e_source_get_uid(source));
            const auto known = m_calendars.find(uid);
            std::shared_ptr<Calendar> calendar;
            if (known != m_calendars.end()) {
                calendar = known->second;
            } else {
                calendar = std::make_shared<Calendar>();
                calendar->isLocal = backendName == "local";
            }
            calendar->source = GObjectRef<ESource>::share(source);
            calendar->name = QString::fromUtf8(e_source_get_display_name(source));
            enabled.emplace(uid, std::move(calendar));
        }
        g_list_free_full(sources, g_object_unref);
        m_calendars = std::move(enabled);
    }

    // One calendar.

    /// Ends with nothing where the calendar is open.
    static QCoro::Task<std::optional<CalendarError>> open(std::shared_ptr<Impl> self,
                                                          std::shared_ptr<Calendar> calendar,
                                                          GObjectRef<GCancellable> cancellable,
                                                          QDeadlineTimer deadline)
    {
        if (calendar->client && !*calendar->isDead) {
            co_return std::nullopt;
        }
        if (calendar->client) {
            self->m_log(u"calendar opened again name=\"%1\" reason=\"the calendar service died\""_s.arg(
                logText(calendar->name)));
        }
        calendar->dropClient();
        const auto connecting = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
            e_cal_client_connect(calendar->source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS,
                                 static_cast<guint32>(-1), cancellable.get(), callback, data);
        });
        if (!co_await connecting.until(deadline)) {
            co_return CalendarError{u"open"_s, u"it did not answer in time"_s, true};
        }
        GError *error = nullptr;
        EClient *made = e_cal_client_connect_finish(connecting.value().get(), &error);
        if (made == nullptr) {
            co_return CalendarError{u"open"_s, messageOf(error)};
        }
        calendar->client = GObjectRef<ECalClient>::adopt(E_CAL_CLIENT(made));
        calendar->isDead = std::make_shared<std::atomic<bool>>(false);
        calendar->areSeriesStale = std::make_shared<std::atomic<bool>>(true);
        setFlagOn(
            made, "backend-died", calendar->isDead,
            +[](EClient *, gpointer flag) { *static_cast<Flag *>(flag)->get() = true; });

        const auto watching = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
            GTask *task = g_task_new(nullptr, cancellable.get(), callback, data);
            g_task_set_task_data(task, new WatchData{calendar->client, calendar->areSeriesStale},
                                 [](gpointer watch) { delete static_cast<WatchData *>(watch); });
            g_task_run_in_thread(task, makeWatch);
            g_object_unref(task);
        });
        const QDeadlineTimer watchEnd(watchTime, Qt::PreciseTimer);
        if (co_await watching.until(std::min(watchEnd, deadline))) {
            // Without a watch the series are fetched anew each time.
            calendar->watch = GObjectRef<ECalClientView>::adopt(static_cast<ECalClientView *>(
                g_task_propagate_pointer(G_TASK(watching.value().get()), nullptr)));
        }
        co_return std::nullopt;
    }

    static Pending<GObjectRef<GAsyncResult>> listObjects(const Calendar &calendar, const QByteArray &query,
                                                         GCancellable *cancellable)
    {
        return startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
            e_cal_client_get_object_list(calendar.client.get(), query.constData(), cancellable, callback,
                                         data);
        });
    }

    static std::expected<Components, CalendarError> finishListObjects(ECalClient *client,
                                                                      GAsyncResult *result)
    {
        GError *error = nullptr;
        GSList *objects = nullptr;
        e_cal_client_get_object_list_finish(client, result, &objects, &error);
        // Some versions of the library call an empty list a failure, but one without a reason.
        if (error != nullptr) {
            return std::unexpected(CalendarError{u"query"_s, messageOf(error)});
        }
        Components components;
        for (GSList *item = objects; item != nullptr; item = item->next) {
            components.push_back(GObjectRef<ICalComponent>::adopt(static_cast<ICalComponent *>(item->data)));
        }
        g_slist_free(objects);
        return components;
    }

    static QCoro::Task<std::expected<std::vector<CalendarEvent>, CalendarError>>
    queryCalendar(std::shared_ptr<Impl> self, std::shared_ptr<Calendar> calendar, DateInterval interval,
                  QByteArray timeZoneId, GObjectRef<GCancellable> cancellable, QDeadlineTimer inTime,
                  QDeadlineTimer deadline)
    {
        auto events =
            co_await tryCalendar(self, calendar, interval, timeZoneId, cancellable, inTime, deadline);
        if (!events && !events.error().isTimeout && !inTime.hasExpired() && !self->m_isClosed) {
            // The service may have died; the next call starts it again.
            self->m_log(u"calendar opened again name=\"%1\" step=\"%2\" reason=\"%3\""_s.arg(
                logText(calendar->name), events.error().step, logText(events.error().reason)));
            calendar->dropClient();
            events =
                co_await tryCalendar(self, calendar, interval, timeZoneId, cancellable, inTime, deadline);
        }
        if (!events && events.error().step != u"expansion") {
            calendar->dropClient();
        }
        co_return events;
    }

    static QCoro::Task<std::expected<std::vector<CalendarEvent>, CalendarError>>
    tryCalendar(std::shared_ptr<Impl> self, std::shared_ptr<Calendar> calendar, DateInterval interval,
                QByteArray timeZoneId, GObjectRef<GCancellable> cancellable, QDeadlineTimer inTime,
                QDeadlineTimer deadline)
    {
        const CalendarError late{u"query"_s, u"it did not answer in time"_s, true};
        if (const auto failure = co_await open(self, calendar, cancellable, inTime)) {
            co_return std::unexpected(*failure);
        }
        const GObjectRef<ECalClient> client = calendar->client;
        if (calendar->knownInterval != interval || calendar->knownTimeZoneId != timeZoneId) {
            calendar->knownInterval = interval;
            calendar->knownTimeZoneId = timeZoneId;
            calendar->knownSeries.clear();
            calendar->series.reset();
        }
        const bool areSeriesKnown = calendar->series && calendar->watch && !*calendar->areSeriesStale &&
                                    !calendar->series->refetch.hasExpired();
        // What changes from here on is seen by the next query.
        *calendar->areSeriesStale = false;
        const auto singlesCall = listObjects(*calendar, singlesQuery(interval), cancellable.get());
        Components series;
        if (!areSeriesKnown) {
            calendar->series.reset();
            const auto seriesCall = listObjects(*calendar, seriesQuery, cancellable.get());
            if (!co_await seriesCall.until(inTime)) {
                co_return std::unexpected(late);
            }
            auto objects = finishListObjects(client.get(), seriesCall.value().get());
            if (!objects) {
                co_return std::unexpected(objects.error());
            }
            series = std::move(*objects);
        }
        if (!co_await singlesCall.until(inTime)) {
            co_return std::unexpected(late);
        }
        auto singles = finishListObjects(client.get(), singlesCall.value().get());
        if (!singles) {
            co_return std::unexpected(singles.error());
        }

        // What the components name is read on a worker where there are many of them.
        Sorted sorted;
        if (singles->size() + series.size() <= maximumSortedAtOnce) {
            sorted = sortComponents(std::move(*singles), std::move(series));
        } else {
            const auto sorting =
                startOnPool(self->m_workers.threads(),
                            [singles = std::move(*singles), series = std::move(series)]() mutable {
                                return sortComponents(std::move(singles), std::move(series));
                            });
            if (!co_await sorting.until(inTime)) {
                co_return std::unexpected(CalendarError{u"expansion"_s, u"it took too long"_s, true});
            }
            sorted = std::move(*sorting.value());
        }

        if (!calendar->isLocal && sorted.uids.size() <= maximumSingleFetches) {
            // Other services may count a changed instance as a single event: the whole series is asked for.
            auto whole = co_await fetchWhole(client, sorted.uids, cancellable, inTime);
            if (!whole) {
                co_return std::unexpected(late);
            }
            if (!whole->empty() || sorted.uids.empty()) {
                std::erase_if(sorted.singles, [&sorted](const GObjectRef<ICalComponent> &component) {
                    const char *uid = i_cal_component_get_uid(component.get());
                    return uid != nullptr && sorted.uids.contains(QByteArray(uid));
                });
                sorted.series = std::move(*whole);
            }
        }
        if (!co_await fetchTimeZones(client, std::move(sorted.timeZones), cancellable, inTime)) {
            co_return std::unexpected(late);
        }

        if (self->m_strayJobs >= maximumStrayJobs) {
            co_return std::unexpected(
                CalendarError{u"expansion"_s, u"earlier expansions have not ended yet"_s, true});
        }
        auto control = std::make_shared<ExpansionControl>();
        ExpansionRequest request{interval, timeZoneId, {}, {}, calendar->knownSeries, calendar->suspects, {}};
        request.customZone = [sharedClient = refReleasedOnMainThread(client)](const char *tzid) {
            return e_timezone_cache_get_timezone(E_TIMEZONE_CACHE(sharedClient.get()), tzid);
        };
        self->m_controls.insert(control);
        const auto expanding =
            startOnPool(self->m_workers.threads(), [singles = std::move(sorted.singles),
                                                    series = std::move(sorted.series),
                                                    request = std::move(request), control]() mutable {
                return Expanded{expandGroups(groupByIdentifier(std::move(singles)), request, *control),
                                expandGroups(groupByIdentifier(std::move(series)), request, *control)};
            });
        if (!co_await expanding.until(inTime)) {
            control->cancel();
            // Most expansions end at once when they are cancelled, with what they have found out.
            if (!co_await expanding.until(deadline)) {
                if (const std::size_t suspect = control->busyWith; suspect != 0) {
                    calendar->suspects.insert(suspect);
                }
                ++self->m_strayJobs;
                spawn(awaitStrayJob(self, control, expanding));
                co_return std::unexpected(CalendarError{u"expansion"_s, u"it took too long"_s, true});
            }
        }
        self->m_controls.erase(control);
        Expanded expanded = std::move(*expanding.value());
        calendar->knownSeries.merge(std::map(expanded.series.series));
        if (!expanded.singles.isComplete || !expanded.series.isComplete) {
            co_return std::unexpected(CalendarError{u"expansion"_s, u"it took too long"_s, true});
        }
        if (!areSeriesKnown) {
            calendar->knownSeries = std::move(expanded.series.series);
            calendar->series = Calendar::Series{interval, timeZoneId, std::move(expanded.series.events),
                                                std::move(expanded.series.skippedEvents),
                                                QDeadlineTimer(seriesRefetchInterval)};
        }
        std::vector<CalendarEvent> events = std::move(expanded.singles.events);
        std::ranges::copy(calendar->series->events, std::back_inserter(events));
        std::vector<SkippedEvent> skippedEvents = std::move(expanded.singles.skippedEvents);
        std::ranges::copy(calendar->series->skippedEvents, std::back_inserter(skippedEvents));
        self->logSkippedEvents(*calendar, skippedEvents);
        co_return events;
    }

    template <typename Done>
    static QCoro::Task<void> awaitStrayJob(std::shared_ptr<Impl> self,
                                           std::shared_ptr<ExpansionControl> control, Done done)
    {
        co_await done.untilResolved();
        self->m_controls.erase(control);
        --self->m_strayJobs;
    }

    static QCoro::Task<std::optional<Components>> fetchWhole(GObjectRef<ECalClient> client,
                                                             std::set<QByteArray> uids,
                                                             GObjectRef<GCancellable> cancellable,
                                                             QDeadlineTimer deadline)
    {
        Components components;
        auto next = uids.begin();
        while (next != uids.end()) {
            std::vector<Pending<GObjectRef<GAsyncResult>>> calls;
            for (; next != uids.end() && calls.size() < fetchesAtATime; ++next) {
                calls.push_back(startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
                    e_cal_client_get_objects_for_uid(client.get(), next->constData(), cancellable.get(),
                                                     callback, data);
                }));
            }
            for (const auto &call : calls) {
                if (!co_await call.until(deadline)) {
                    co_return std::nullopt;
                }
                GSList *objects = nullptr;
                // One that has gone since is no failure.
                e_cal_client_get_objects_for_uid_finish(client.get(), call.value().get(), &objects, nullptr);
                for (GSList *item = objects; item != nullptr; item = item->next) {
                    components.push_back(GObjectRef<ICalComponent>::share(
                        e_cal_component_get_icalcomponent(static_cast<ECalComponent *>(item->data))));
                }
                g_slist_free_full(objects, g_object_unref);
            }
        }
        co_return components;
    }

    /// Brings the zones into the client's cache, where the expansion finds them; answers false when late.
    static QCoro::Task<bool> fetchTimeZones(GObjectRef<ECalClient> client, std::set<QByteArray> identifiers,
                                            GObjectRef<GCancellable> cancellable, QDeadlineTimer deadline)
    {
        for (const QByteArray &tzid : identifiers) {
            if (e_timezone_cache_get_timezone(E_TIMEZONE_CACHE(client.get()), tzid.constData()) != nullptr) {
                continue;
            }
            const auto call = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
                e_cal_client_get_timezone(client.get(), tzid.constData(), cancellable.get(), callback, data);
            });
            if (!co_await call.until(deadline)) {
                co_return false;
            }
            ICalTimezone *zone = nullptr;
            // A zone that nobody knows is taken for the user's own.
            e_cal_client_get_timezone_finish(client.get(), call.value().get(), &zone, nullptr);
        }
        co_return true;
    }

    // What becomes of the answers.

    void conclude(Calendar &calendar, DateInterval interval,
                  std::expected<std::vector<CalendarEvent>, CalendarError> events, CalendarAnswers &answers)
    {
        if (events) {
            if (calendar.isSilent) {
                calendar.isSilent = false;
                m_log(u"calendar answers again name=\"%1\""_s.arg(logText(calendar.name)));
            }
            ++answers.answered;
            std::ranges::copy(*events, std::back_inserter(answers.events));
            calendar.lastAnswer = Calendar::LastAnswer{interval, std::move(*events)};
            return;
        }
        const bool standsIn = calendar.lastAnswer && calendar.lastAnswer->interval == interval;
        if (!calendar.isSilent && !m_isClosed) {
            calendar.isSilent = true;
            m_log(u"calendar did not answer name=\"%1\" step=\"%2\" reason=\"%3\" lastAnswerStands=%4"_s.arg(
                logText(calendar.name), events.error().step, logText(events.error().reason),
                standsIn ? u"yes"_s : u"no"_s));
        }
        if (standsIn) {
            ++answers.answered;
            std::ranges::copy(calendar.lastAnswer->events, std::back_inserter(answers.events));
        } else {
            ++answers.silent;
            answers.error = u"The calendar \"%1\" did not answer: %2"_s.arg(logText(calendar.name),
                                                                            logText(events.error().reason));
        }
    }

    void logSkippedEvents(Calendar &calendar, const std::vector<SkippedEvent> &skippedEvents)
    {
        QSet<QByteArray> logged;
        for (const SkippedEvent &skipped : skippedEvents) {
            if (!calendar.loggedSkips.contains(skipped.key) && !logged.contains(skipped.key)) {
                m_log(u"calendar event left out calendar=\"%1\" %2"_s.arg(logText(calendar.name),
                                                                          skipped.text));
            }
            logged.insert(skipped.key);
        }
        calendar.loggedSkips = std::move(logged);
    }

    void logService(const Found &found)
    {
        if (m_lastService == found.service || m_isClosed) {
            return;
        }
        const bool isFirst = !m_lastService;
        m_lastService = found.service;
        switch (found.service) {
        case Service::there:
            if (!isFirst) {
                m_log(u"calendar service answers"_s);
            }
            break;
        case Service::absent:
            m_log(u"calendar service absent reason=\"%1\""_s.arg(logText(found.error)));
            break;
        case Service::silent:
            m_log(u"calendar service did not answer reason=\"%1\""_s.arg(logText(found.error)));
            break;
        }
    }

    CalendarLog m_log;
    TimeZoneId m_timeZoneId;
    WorkerPool m_workers{workerThreads};
    GObjectRef<ESourceRegistry> m_registry;
    std::optional<Pending<Found>> m_registryCall;
    std::map<QByteArray, std::shared_ptr<Calendar>> m_calendars;
    GObjectRef<GCancellable> m_cancellable;
    std::set<std::shared_ptr<ExpansionControl>> m_controls;
    std::optional<Service> m_lastService;
    int m_strayJobs = 0;
    bool m_isClosed = false;
};

EvolutionCalendars::EvolutionCalendars(DebugLogService &log, TimeZoneId timeZoneId)
    : m_impl(std::make_shared<Impl>(log, std::move(timeZoneId)))
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

QCoro::Task<CalendarAnswers> EvolutionCalendars::query(DateInterval interval, QDeadlineTimer deadline)
{
    return Impl::query(m_impl, interval, deadline);
}

void EvolutionCalendars::close()
{
    m_impl->close();
}

} // namespace corvane
