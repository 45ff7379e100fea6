// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/StatusNotifierHost.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QSignalSpy>
#include <QTextDocumentFragment>

#include <qcoro/qcorodbuspendingcall.h>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto itemInterface = "org.kde.StatusNotifierItem"_L1;
constexpr auto watcherName = "org.kde.StatusNotifierWatcher"_L1;
constexpr auto menuInterface = "com.canonical.dbusmenu"_L1;
constexpr auto menuPath = "/StatusNotifierItem/Menu"_L1;

QCoro::Task<QDBusMessage> answerTo(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, 5000);
}

} // namespace

StatusNotifierHost::StatusNotifierHost(QDBusConnection bus) : m_bus(std::move(bus))
{
    m_bus.connect({}, {}, itemInterface, u"XAyatanaNewLabel"_s, this, SLOT(newLabel(QString, QString)));
    m_bus.connect({}, {}, itemInterface, u"NewTitle"_s, this, SLOT(newTitle()));
    m_bus.connect({}, {}, itemInterface, u"NewToolTip"_s, this, SLOT(newToolTip()));
    m_bus.connect({}, {}, menuInterface, u"LayoutUpdated"_s, this, SLOT(newLayout(uint, int)));
    m_bus.registerObject(u"/StatusNotifierWatcher"_s, this,
                         QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportScriptableSignals |
                             QDBusConnection::ExportScriptableProperties);
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
    m_readLabel.clear();
    drawnLabel.clear();
}

void StatusNotifierHost::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    if (hasHost) {
        Q_EMIT StatusNotifierHostRegistered();
        if (!registrations.isEmpty()) {
            readLabel(registrations.constLast());
        }
    } else {
        m_readLabel.clear();
        drawnLabel.clear();
        Q_EMIT StatusNotifierHostUnregistered();
    }
}

QVariantMap StatusNotifierHost::properties(const QString &item)
{
    auto message = QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
    message << QString(itemInterface);
    const QDBusMessage answer = ask(message);
    return answer.arguments().isEmpty() ? QVariantMap()
                                        : qdbus_cast<QVariantMap>(answer.arguments().constFirst());
}

QStringList StatusNotifierHost::toolTip(const QString &item)
{
    const QVariant told = properties(item).value(u"ToolTip"_s);
    const auto toolTip = qdbus_cast<StatusToolTip>(told.value<QDBusArgument>());
    const QString description = QTextDocumentFragment::fromHtml(toolTip.description).toPlainText();
    return description.isEmpty() ? QStringList{toolTip.title} : QStringList{toolTip.title, description};
}

QString StatusNotifierHost::introspection(const QString &item)
{
    const auto message = QDBusMessage::createMethodCall(
        item, u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s);
    const QDBusMessage answer = ask(message);
    return answer.arguments().isEmpty() ? QString() : answer.arguments().constFirst().toString();
}

void StatusNotifierHost::activate(const QString &item, int x, int y)
{
    auto message =
        QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s, itemInterface, u"Activate"_s);
    message << x << y;
    m_bus.send(message);
}

QDBusMessage StatusNotifierHost::ask(const QDBusMessage &message)
{
    return QCoro::waitFor(answerTo(m_bus, message));
}

void StatusNotifierHost::giveToken(const QString &item, const QString &token)
{
    auto message = QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s, itemInterface,
                                                  u"ProvideXdgActivationToken"_s);
    message << token;
    m_bus.send(message);
}

QDBusMessage StatusNotifierHost::askMenu(const QString &item, const QString &method,
                                         const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(item, menuPath, menuInterface, method);
    message.setArguments(arguments);
    return ask(message);
}

MenuLayout StatusNotifierHost::menu(const QString &item, uint *revision)
{
    const QDBusMessage answer = askMenu(item, u"GetLayout"_s, {0, -1, QStringList()});
    if (answer.arguments().size() != 2) {
        return {.id = -1, .properties = {}, .children = {}};
    }
    if (revision != nullptr) {
        *revision = answer.arguments().constFirst().toUInt();
    }
    return qdbus_cast<MenuLayout>(answer.arguments().constLast());
}

QStringList StatusNotifierHost::rightClick(const QString &item)
{
    const QString path = properties(item).value(u"Menu"_s).value<QDBusObjectPath>().path();
    auto message = QDBusMessage::createMethodCall(item, path, menuInterface, u"GetLayout"_s);
    message << 0 << -1 << QStringList();
    const QDBusMessage answer = ask(message);
    QStringList texts;
    if (answer.arguments().size() == 2) {
        const auto menu = qdbus_cast<MenuLayout>(answer.arguments().constLast());
        for (const MenuLayout &line : menu.children) {
            texts.append(line.properties.value(u"label"_s).toString());
        }
    }
    return texts;
}

void StatusNotifierHost::openMenu(const QString &item)
{
    // A host reads a menu before it shows it.
    auto read = QDBusMessage::createMethodCall(item, menuPath, menuInterface, u"GetLayout"_s);
    read << 0 << -1 << QStringList();
    m_bus.send(read);
    auto message = QDBusMessage::createMethodCall(item, menuPath, menuInterface, u"AboutToShow"_s);
    message << 0;
    m_bus.send(message);
}

void StatusNotifierHost::chooseLine(const QString &item, int id)
{
    auto message = QDBusMessage::createMethodCall(item, menuPath, menuInterface, u"Event"_s);
    message << id << u"clicked"_s << QVariant::fromValue(QDBusVariant(0)) << uint{0};
    m_bus.send(message);
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString &service)
{
    registrations.append(service);
    if (isSilent) {
        setDelayedReply(true);
    } else if (refuses) {
        sendErrorReply(QDBusError::AccessDenied, u"not here"_s);
    } else if (!readsLate) {
        readLabel(service);
    }
}

void StatusNotifierHost::readLabel(const QString &item)
{
    auto message = QDBusMessage::createMethodCall(item, u"/StatusNotifierItem"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
    message << QString(itemInterface);
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        const QDBusPendingReply<QVariantMap> answer = *call;
        if (answer.isValid()) {
            m_readLabel = answer.value().value(u"XAyatanaLabel"_s).toString();
            ++labelReads;
        }
    });
}

void StatusNotifierHost::newLayout(uint revision, int parent)
{
    layouts.append({revision, parent});
}

void StatusNotifierHost::newLabel(const QString &label, const QString &)
{
    labels.append(label);
    if (std::exchange(m_readLabel, label) != label) {
        drawnLabel = label;
    }
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
