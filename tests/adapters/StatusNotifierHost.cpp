// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QSignalSpy>

#include <qcoro/qcorodbuspendingcall.h>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto itemInterface = "org.kde.StatusNotifierItem"_L1;
constexpr auto watcherName = "org.kde.StatusNotifierWatcher"_L1;

QCoro::Task<QDBusMessage> ask(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, 5000);
}

} // namespace

StatusNotifierHost::StatusNotifierHost(QDBusConnection bus) : m_bus(std::move(bus))
{
    m_bus.connect({}, {}, itemInterface, u"XAyatanaNewLabel"_s, this, SLOT(newLabel(QString, QString)));
    m_bus.connect({}, {}, itemInterface, u"NewTitle"_s, this, SLOT(newTitle()));
    m_bus.connect({}, {}, itemInterface, u"NewToolTip"_s, this, SLOT(newToolTip()));
    m_bus.registerObject(u"/StatusNotifierWatcher"_s, this, QDBusConnection::ExportScriptableSlots);
}

StatusNotifierHost::~StatusNotifierHost()
{
    m_bus.unregisterObject(u"/StatusNotifierWatcher"_s);
}

void StatusNotifierHost::start()
{
    if (!m_bus.registerService(watcherName)) {
        qFatal("the status items' watcher cannot take its name");
    }
}

void StatusNotifierHost::stop()
{
    m_bus.unregisterService(watcherName);
}

QVariantMap StatusNotifierHost::properties(const QString &item)
{
    auto message = QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
    message << QString(itemInterface);
    const QDBusMessage answer = QCoro::waitFor(ask(m_bus, message));
    return answer.arguments().isEmpty() ? QVariantMap()
                                        : qdbus_cast<QVariantMap>(answer.arguments().constFirst());
}

QString StatusNotifierHost::introspection(const QString &item)
{
    const auto message = QDBusMessage::createMethodCall(
        item, u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s);
    const QDBusMessage answer = QCoro::waitFor(ask(m_bus, message));
    return answer.arguments().isEmpty() ? QString() : answer.arguments().constFirst().toString();
}

void StatusNotifierHost::activate(const QString &item, int x, int y)
{
    auto message =
        QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s, itemInterface, u"Activate"_s);
    message << x << y;
    m_bus.send(message);
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString &service)
{
    registrations.append(service);
}

void StatusNotifierHost::newLabel(const QString &label, const QString &)
{
    labels.append(label);
}

void StatusNotifierHost::newTitle()
{
    ++titleSignals;
}

void StatusNotifierHost::newToolTip()
{
    ++toolTipSignals;
}

} // namespace corvane
