// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopNotifications.h"

#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/PlainText.h"

#include <qcoro/qcorodbuspendingcall.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QStringList>
#include <QVariantMap>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

QDBusMessage serverCall(const QString &method)
{
    return QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                          u"/org/freedesktop/Notifications"_s,
                                          u"org.freedesktop.Notifications"_s, method);
}

} // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection sessionBus, std::chrono::milliseconds timeout)
    : m_bus(std::move(sessionBus))
    , m_timeout(timeout)
{
}

QCoro::Task<bool> DesktopNotifications::showQuietly(QString title, QString body)
{
    // The coroutine gets copies, because the object may be gone before it ends.
    return show(m_bus, static_cast<int>(m_timeout.count()), std::move(title), std::move(body));
}

QCoro::Task<bool> DesktopNotifications::show(QDBusConnection bus, int timeout, QString title, QString body)
{
    if (!bus.isConnected()) {
        co_return false;
    }
    const QDBusMessage capabilities = co_await bus.asyncCall(serverCall(u"GetCapabilities"_s), timeout);
    if (capabilities.type() != QDBusMessage::ReplyMessage || !bus.isConnected()) {
        co_return false;
    }
    const bool takesMarkup = capabilities.arguments().value(0).toStringList().contains(u"body-markup"_s);
    const QVariantMap hints{
        {u"urgency"_s, QVariant::fromValue(uchar{1})}, // normal: a critical one stays on the screen
        {u"desktop-entry"_s, QString(names::application)},
        {u"suppress-sound"_s, true}};
    QDBusMessage call = serverCall(u"Notify"_s);
    const QString text = plainText(body);
    call.setArguments({u"Quillet"_s, 0U, QString(names::application), plainText(title),
                       takesMarkup ? text.toHtmlEscaped() : text, QStringList(), hints, -1});
    const QDBusMessage answer = co_await bus.asyncCall(call, timeout);
    co_return answer.type() == QDBusMessage::ReplyMessage;
}

} // namespace corvane
