// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServiceRegistry.h"

#include "Corvane/Platform/Linux/Waiting/GioCall.h"
#include "Corvane/Utilities/Spawn.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr Seconds pauseAfterNews{60};

bool isBusInReach()
{
    // Without either of these, GLib would start a separate bus for this program.
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

} // namespace

QString messageOf(GError *error)
{
    const QString message = error != nullptr ? QString::fromUtf8(error->message) : u"unknown"_s;
    g_clear_error(&error);
    return message;
}

QCoro::Task<ServiceRegistry::Found> ServiceRegistry::find(std::shared_ptr<ServiceRegistry> self,
                                                          QDeadlineTimer deadline)
{
    if (self->m_registry && self->isEmpty()) {
        // The service has left, or has started since the list was made.
        self->m_registry.reset();
    }
    if (self->m_registry) {
        co_return Found{State::there, {}};
    }
    if (!isBusInReach()) {
        co_return Found{State::absent, u"there is no session bus"_s};
    }
    Pending<Found> call;
    if (self->m_call) {
        // A service that hangs blocks this call for half a minute in any case, so there is only one at a
        // time.
        call = *self->m_call;
    } else {
        self->m_call = call;
        spawn(connect(self, call));
    }
    if (!co_await call.until(deadline)) {
        self->m_isLate = true;
        co_return Found{State::silent, u"the list of calendars did not come in time"_s};
    }
    co_return call.value();
}

/// Shares the registry, because the answer may come long after everyone has stopped waiting.
QCoro::Task<void> ServiceRegistry::connect(std::shared_ptr<ServiceRegistry> self, Pending<Found> call)
{
    Found found = co_await open(self);
    const bool isNews = std::exchange(self->m_isLate, false) && found.state == State::there;
    self->m_call.reset();
    call.resolve(std::move(found));
    if (isNews && self->m_nextNews <= uptime()) {
        // Otherwise a list that is late at login would be used a minute later, at the next load. A service
        // that ends again and again must not cause a load each time.
        self->m_nextNews = uptime() + pauseAfterNews;
        self->m_listCameLate();
    }
}

QCoro::Task<ServiceRegistry::Found> ServiceRegistry::open(std::shared_ptr<ServiceRegistry> self)
{
    const auto bus = startGioCall([](GAsyncReadyCallback callback, gpointer data) {
        g_bus_get(G_BUS_TYPE_SESSION, nullptr, callback, data);
    });
    co_await bus.untilResolved();
    GError *error = nullptr;
    const auto connection = GObjectRef<GDBusConnection>::adopt(g_bus_get_finish(bus.value().get(), &error));
    if (!connection) {
        co_return Found{State::absent, messageOf(error)};
    }
    // The program must not end with the bus.
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    const auto making = startGioCall(
        [](GAsyncReadyCallback callback, gpointer data) { e_source_registry_new(nullptr, callback, data); });
    co_await making.untilResolved();
    self->m_registry =
        GObjectRef<ESourceRegistry>::adopt(e_source_registry_new_finish(making.value().get(), &error));
    const Found absent{State::absent, u"the session bus has none"_s};
    if (!self->m_registry) {
        if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) ||
            g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)) {
            g_clear_error(&error);
            co_return absent;
        }
        co_return Found{State::silent, messageOf(error)};
    }
    if (self->isEmpty()) {
        // Without a service the library makes an empty list; a real one is never empty.
        self->m_registry.reset();
        co_return absent;
    }
    co_return Found{State::there, {}};
}

bool ServiceRegistry::isEmpty() const
{
    GList *sources = e_source_registry_list_sources(m_registry.get(), nullptr);
    const bool isEmpty = sources == nullptr;
    g_list_free_full(sources, g_object_unref);
    return isEmpty;
}

std::vector<ServiceEntry> ServiceRegistry::calendars() const
{
    std::vector<ServiceEntry> entries;
    if (!m_registry) {
        return entries;
    }
    GList *sources = e_source_registry_list_enabled(m_registry.get(), E_SOURCE_EXTENSION_CALENDAR);
    for (GList *item = sources; item != nullptr; item = item->next) {
        auto *source = static_cast<ESource *>(item->data);
        auto *backend =
            static_cast<ESourceBackend *>(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR));
        const QByteArray backendName(e_source_backend_get_backend_name(backend));
        if (backendName != "contacts" && backendName != "weather") {
            entries.push_back({e_source_get_uid(source), GObjectRef<ESource>::share(source),
                               QString::fromUtf8(e_source_get_display_name(source)), accountOf(source),
                               backendName == "local"});
        }
    }
    g_list_free_full(sources, g_object_unref);
    return entries;
}

QString ServiceRegistry::accountOf(ESource *source) const
{
    const char *parent = e_source_get_parent(source);
    const auto account = GObjectRef<ESource>::adopt(
        parent != nullptr ? e_source_registry_ref_source(m_registry.get(), parent) : nullptr);
    return account ? QString::fromUtf8(e_source_get_display_name(account.get())) : QString();
}

} // namespace corvane
