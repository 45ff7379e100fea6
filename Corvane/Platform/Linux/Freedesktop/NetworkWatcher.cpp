// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/NetworkWatcher.h"

#include "Corvane/Platform/Linux/Freedesktop/BusNames.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto managerName = "org.freedesktop.NetworkManager"_L1; // also the name of its interface
constexpr auto managerPath = "/org/freedesktop/NetworkManager"_L1;
constexpr auto portalService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto portalInterface = "org.freedesktop.portal.NetworkMonitor"_L1;

/// Whether the network is usable according to NetworkManager's properties; none if they do not say.
std::optional<bool> managerSaysUsable(const QDBusMessage &answer)
{
    constexpr uint connectedGlobal = 70;
    constexpr uint connectivityUnknown = 0; // nothing checks whether the network leads anywhere
    constexpr uint connectivityFull = 4;
    const auto properties = qdbus_cast<QVariantMap>(answer.arguments().value(0));
    const QVariant state = properties.value(u"State"_s);
    if (state.typeId() != QMetaType::UInt) {
        return std::nullopt;
    }
    const uint connectivity = properties.value(u"Connectivity"_s, connectivityUnknown).toUInt();
    return state.toUInt() == connectedGlobal &&
           (connectivity == connectivityUnknown || connectivity == connectivityFull);
}

std::optional<bool> portalSaysUsable(const QDBusMessage &answer)
{
    const QVariant isAvailable = answer.arguments().value(0);
    return isAvailable.typeId() == QMetaType::Bool ? std::optional(isAvailable.toBool()) : std::nullopt;
}

} // namespace

NetworkWatcher::NetworkWatcher(QDBusConnection systemBus, QDBusConnection sessionBus, QObject *parent)
    : QObject(parent)
    , m_systemBus(std::move(systemBus))
    , m_sessionBus(std::move(sessionBus))
{
    // Without service names: to subscribe by name, Qt would first ask for the name's owner and block.
    m_systemBus.connect({}, managerPath, bus::propertiesInterface, u"PropertiesChanged"_s, this,
                        SLOT(update()));
    m_sessionBus.connect({}, portalPath, portalInterface, u"changed"_s, this, SLOT(update()));
    watch(m_systemBus, managerName);
    watch(m_sessionBus, portalService);
    update();
}

void NetworkWatcher::watch(QDBusConnection &bus, const QString &service)
{
    if (!bus.isConnected()) {
        return;
    }
    bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
                this, SLOT(update()));
    auto *watcher = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &NetworkWatcher::update);
}

void NetworkWatcher::update()
{
    ++m_latestQuestion;
    askManager();
}

void NetworkWatcher::askManager()
{
    auto question =
        QDBusMessage::createMethodCall(managerName, managerPath, bus::propertiesInterface, u"GetAll"_s);
    question << QString(managerName);
    ask(m_systemBus, question, managerSaysUsable, [this] { askPortal(); });
}

void NetworkWatcher::askPortal()
{
    ask(m_sessionBus,
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, u"GetAvailable"_s),
        portalSaysUsable, [] {});
}

void NetworkWatcher::ask(const QDBusConnection &bus, const QDBusMessage &question,
                         std::function<std::optional<bool>(const QDBusMessage &)> isUsable,
                         std::function<void()> otherwise)
{
    // On a broken connection no answer ever comes.
    if (!bus.isConnected()) {
        otherwise();
        return;
    }
    QDBusMessage message = question;
    message.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, bus::questionTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, number = m_latestQuestion, isUsable = std::move(isUsable),
             otherwise = std::move(otherwise)] {
                watcher->deleteLater();
                if (number != m_latestQuestion) {
                    return;
                }
                const QDBusMessage answer = watcher->reply();
                const auto told =
                    answer.type() == QDBusMessage::ReplyMessage ? isUsable(answer) : std::nullopt;
                if (told) {
                    setUsable(*told);
                } else {
                    otherwise();
                }
            });
}

void NetworkWatcher::setUsable(bool isUsable)
{
    const auto before = std::exchange(m_isUsable, isUsable);
    if (isUsable && before == false) {
        Q_EMIT cameBack();
    }
}

} // namespace corvane
