// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopSleepInhibitor.h"

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/Spawn.h"

#include <qcoro/qcorodbuspendingcall.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr int inhibitTimeout = 5000;

/// Inhibits suspend only: not logging out, switching users or blanking the screen. The portal uses the
/// session manager's numbers.
constexpr uint suspending = 4;

constexpr auto reason = "A lesson is under way or begins soon"_L1;

struct Service {
    QLatin1String name;
    QLatin1String path;
    QLatin1String interface;
    bool isOnSystemBus = false;
    QLatin1String release; ///< the method that releases the request; empty if dropping the ticket does
};

constexpr std::size_t portal = 0;
constexpr std::size_t sessionManager = 1;
constexpr std::size_t powerManager = 2;
constexpr std::size_t logind = 3;

constexpr std::array<Service, 4> services{{
    {"org.freedesktop.portal.Desktop"_L1, "/org/freedesktop/portal/desktop"_L1,
     "org.freedesktop.portal.Inhibit"_L1, false, "Close"_L1},
    {"org.gnome.SessionManager"_L1, "/org/gnome/SessionManager"_L1, "org.gnome.SessionManager"_L1, false,
     "Uninhibit"_L1},
    {"org.freedesktop.PowerManagement"_L1, "/org/freedesktop/PowerManagement/Inhibit"_L1,
     "org.freedesktop.PowerManagement.Inhibit"_L1, false, "UnInhibit"_L1},
    {"org.freedesktop.login1"_L1, "/org/freedesktop/login1"_L1, "org.freedesktop.login1.Manager"_L1, true,
     ""_L1},
}};

QVariantList inhibitArguments(std::size_t service)
{
    switch (service) {
    case portal:
        return {QString(), suspending, QVariantMap{{u"reason"_s, QString(reason)}}};
    case sessionManager:
        return {QString(names::application), 0U, QString(reason), suspending};
    case powerManager:
        return {u"Quillet"_s, QString(reason)};
    default:
        // "sleep" would also block the teacher's own command.
        return {u"idle"_s, u"Quillet"_s, QString(reason), u"block"_s};
    }
}

/// The ticket in the answer; invalid if the service did not accept the request.
QVariant ticketOf(std::size_t service, const QDBusMessage &answer)
{
    const QVariant value = answer.arguments().value(0);
    if (answer.type() != QDBusMessage::ReplyMessage) {
        return {};
    }
    switch (service) {
    case portal:
        return value.canConvert<QDBusObjectPath>() ? value : QVariant();
    case logind:
        return value.value<QDBusUnixFileDescriptor>().isValid() ? value : QVariant();
    default:
        return value.typeId() == QMetaType::UInt ? value : QVariant();
    }
}

void giveBack(const QDBusConnection &bus, std::size_t service, const QVariant &ticket)
{
    const Service &from = services.at(service);
    if (from.release.isEmpty() || !bus.isConnected()) {
        return;
    }
    const bool isPortal = service == portal;
    auto call = QDBusMessage::createMethodCall(
        from.name, isPortal ? ticket.value<QDBusObjectPath>().path() : QString(from.path),
        isPortal ? u"org.freedesktop.portal.Request"_s : QString(from.interface), from.release);
    call.setAutoStartService(false);
    if (!isPortal) {
        call << ticket;
    }
    bus.send(call);
}

} // namespace

DesktopSleepInhibitor::DesktopSleepInhibitor(QDBusConnection sessionBus, QDBusConnection systemBus,
                                             DebugLogService &logger, QObject *parent)
    : QObject(parent)
    , m_sessionBus(std::move(sessionBus))
    , m_systemBus(std::move(systemBus))
    , m_logger(logger)
{
    m_sessionBus.connect({}, {}, u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                         SLOT(handlePortalResponse(QDBusMessage)));
    for (std::size_t service = 0; service < services.size(); ++service) {
        if (!busOf(service).isConnected()) {
            continue;
        }
        auto *watcher = new QDBusServiceWatcher(services.at(service).name, busOf(service),
                                                QDBusServiceWatcher::WatchForOwnerChange, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this, service](const QString &, const QString &, const QString &newOwner) {
                    handleOwnerChange(service, !newOwner.isEmpty());
                });
    }
}

DesktopSleepInhibitor::~DesktopSleepInhibitor()
{
    letSleep();
}

QDBusConnection DesktopSleepInhibitor::busOf(std::size_t service) const
{
    return services.at(service).isOnSystemBus ? m_systemBus : m_sessionBus;
}

void DesktopSleepInhibitor::keepAwake()
{
    if (!std::exchange(m_isWanted, true)) {
        ask(0);
    }
}

void DesktopSleepInhibitor::letSleep()
{
    if (!std::exchange(m_isWanted, false)) {
        return;
    }
    ++m_attempt;
    if (const auto hold = std::exchange(m_hold, std::nullopt)) {
        giveBack(busOf(hold->service), hold->service, hold->ticket);
        m_logger.log(u"automatic sleep allowed again"_s);
    }
}

void DesktopSleepInhibitor::ask(std::size_t first)
{
    spawn(acquire(this, ++m_attempt, first));
}

QCoro::Task<void> DesktopSleepInhibitor::acquire(Self self, int attempt, std::size_t first)
{
    for (std::size_t service = first; service < services.size(); ++service) {
        // The service that holds the request is preferred to this one and all later ones.
        if (self->m_hold && self->m_hold->service <= service) {
            co_return;
        }
        const QDBusConnection bus = self->busOf(service);
        if (!bus.isConnected()) {
            continue;
        }
        const Service &asked = services.at(service);
        auto call = QDBusMessage::createMethodCall(asked.name, asked.path, asked.interface, u"Inhibit"_s);
        call.setArguments(inhibitArguments(service));
        call.setAutoStartService(false);
        const QDBusMessage answer = co_await bus.asyncCall(call, inhibitTimeout);
        const QVariant ticket = ticketOf(service, answer);
        if (self == nullptr || attempt != self->m_attempt) {
            if (ticket.isValid()) {
                giveBack(bus, service, ticket);
            }
            co_return;
        }
        if (ticket.isValid()) {
            self->take({.service = service, .ticket = ticket});
            co_return;
        }
    }
    self->m_logger.log(u"automatic sleep cannot be prevented: no service accepts the request"_s);
}

void DesktopSleepInhibitor::take(Hold hold)
{
    if (const auto earlier = std::exchange(m_hold, std::move(hold))) {
        giveBack(busOf(earlier->service), earlier->service, earlier->ticket);
    }
    m_logger.log(u"automatic sleep prevented through="_s + services.at(m_hold->service).name);
}

void DesktopSleepInhibitor::handleOwnerChange(std::size_t service, bool isThere)
{
    if (m_hold && m_hold->service == service) {
        // The service that held the request has left, and its successor does not know of it.
        m_hold.reset();
    } else if (!isThere || (m_hold && m_hold->service < service)) {
        return;
    }
    if (m_isWanted) {
        ask(0);
    }
}

void DesktopSleepInhibitor::handlePortalResponse(const QDBusMessage &message)
{
    const bool isOurs = m_hold && m_hold->service == portal &&
                        m_hold->ticket.value<QDBusObjectPath>().path() == message.path();
    if (isOurs && message.arguments().value(0).toUInt() != 0) {
        m_hold.reset();
        ask(portal + 1);
    }
}

} // namespace corvane
