// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/UPowerSource.h"

#include "Corvane/Platform/Linux/Freedesktop/BusNames.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto upowerService = "org.freedesktop.UPower"_L1; // also the name of its interface
constexpr auto upowerPath = "/org/freedesktop/UPower"_L1;

} // namespace

UPowerSource::UPowerSource(QDBusConnection systemBus, QObject *parent)
    : PowerSource(parent)
    , m_bus(std::move(systemBus))
{
    if (!m_bus.isConnected()) {
        return;
    }
    // Without a service name: to subscribe by name, Qt would first ask for the name's owner and block.
    m_bus.connect({}, upowerPath, bus::propertiesInterface, u"PropertiesChanged"_s, this, SLOT(update()));
    auto *watcher =
        new QDBusServiceWatcher(upowerService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &UPowerSource::update);
    update();
}

void UPowerSource::update()
{
    auto question =
        QDBusMessage::createMethodCall(upowerService, upowerPath, bus::propertiesInterface, u"Get"_s);
    question << QString(upowerService) << u"OnBattery"_s;
    question.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question, bus::questionTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number = ++m_latestQuestion] {
        watcher->deleteLater();
        if (number == m_latestQuestion) {
            handleAnswer(watcher->reply());
        }
    });
}

void UPowerSource::handleAnswer(const QDBusMessage &answer)
{
    const QVariant value = answer.arguments().value(0).value<QDBusVariant>().variant();
    const bool isOnBattery =
        answer.type() == QDBusMessage::ReplyMessage && value.typeId() == QMetaType::Bool && value.toBool();
    if (std::exchange(m_isOnBattery, isOnBattery) != isOnBattery) {
        Q_EMIT changed();
    }
}

} // namespace corvane
