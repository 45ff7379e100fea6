// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusMenuAdaptor.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QGuiApplication>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLineProperties &line)
{
    argument.beginStructure();
    argument << line.id << line.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLineProperties &line)
{
    argument.beginStructure();
    argument >> line.id >> line.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout)
{
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const MenuLayout &child : layout.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout)
{
    layout.children.clear();
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(qdbus_cast<MenuLayout>(child.variant().value<QDBusArgument>()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLineRemovals &removals)
{
    argument.beginStructure();
    argument << removals.id << removals.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLineRemovals &removals)
{
    argument.beginStructure();
    argument >> removals.id >> removals.names;
    argument.endStructure();
    return argument;
}

StatusMenuAdaptor::StatusMenuAdaptor(QObject *parent, QDBusConnection bus, Handlers handlers)
    : QDBusAbstractAdaptor(parent)
    , m_bus(std::move(bus))
    , m_handlers(std::move(handlers))
{
    qDBusRegisterMetaType<QList<int>>();
    qDBusRegisterMetaType<MenuLineProperties>();
    qDBusRegisterMetaType<MenuLinesProperties>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<MenuEvents>();
    qDBusRegisterMetaType<MenuLineRemovals>();
    qDBusRegisterMetaType<MenuLinesRemovals>();
    // Slot arguments are looked up by the type names in the header.
    qRegisterMetaType<MenuLinesProperties>("corvane::MenuLinesProperties");
    qRegisterMetaType<MenuEvents>("corvane::MenuEvents");
    qRegisterMetaType<MenuLinesRemovals>("corvane::MenuLinesRemovals");
}

void StatusMenuAdaptor::setLines(const QStringList &texts)
{
    if (texts == m_lines) {
        return;
    }
    m_lines = texts;
    ++m_revision;
    Q_EMIT LayoutUpdated(m_revision, 0);
}

QString StatusMenuAdaptor::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? u"rtl"_s : u"ltr"_s;
}

QString StatusMenuAdaptor::status() const
{
    return u"normal"_s;
}

QVariantMap StatusMenuAdaptor::propertiesOf(int id, const QStringList &names) const
{
    QVariantMap properties;
    if (id == 0) {
        properties.insert(u"children-display"_s, u"submenu"_s);
    } else if (m_lines.at(id - 1).isEmpty()) {
        properties.insert(u"type"_s, u"separator"_s);
    } else {
        // A single underscore would mark the mnemonic.
        properties.insert(u"label"_s, QString(m_lines.at(id - 1)).replace(u'_', u"__"_s));
    }
    if (!names.isEmpty()) {
        properties.removeIf([&](QVariantMap::iterator each) { return !names.contains(each.key()); });
    }
    return properties;
}

// Sends an error instead of the reply.
void StatusMenuAdaptor::refuse(const QDBusMessage &message, const QString &reason)
{
    message.setDelayedReply(true);
    m_bus.send(message.createErrorReply(QDBusError::InvalidArgs, reason));
}

uint StatusMenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                                  const QDBusMessage &message, MenuLayout &layout)
{
    layout = {};
    if (!isKnown(parentId)) {
        refuse(message, u"no such line"_s);
        return m_revision;
    }
    m_wasRead = true;
    layout.id = parentId;
    layout.properties = propertiesOf(parentId, propertyNames);
    if (parentId == 0 && recursionDepth != 0) {
        for (int id = 1; id <= m_lines.size(); ++id) {
            layout.children.append({id, propertiesOf(id, propertyNames), {}});
        }
    }
    return m_revision;
}

MenuLinesProperties StatusMenuAdaptor::GetGroupProperties(const QList<int> &ids,
                                                          const QStringList &propertyNames)
{
    MenuLinesProperties lines;
    for (int id = 0; id <= m_lines.size(); ++id) {
        // An empty list stands for all lines.
        if (ids.isEmpty() || ids.contains(id)) {
            lines.append({id, propertiesOf(id, propertyNames)});
        }
    }
    return lines;
}

QDBusVariant StatusMenuAdaptor::GetProperty(int id, const QString &name, const QDBusMessage &message)
{
    const QVariant value = isKnown(id) ? propertiesOf(id, {}).value(name) : QVariant();
    if (!value.isValid()) {
        refuse(message, u"no such line, or it has no such property"_s);
        return QDBusVariant(QString());
    }
    return QDBusVariant(value);
}

void StatusMenuAdaptor::Event(int id, const QString &eventId, const QDBusVariant &, uint)
{
    if (id == 0 && eventId == "opened"_L1) {
        m_wasOpened = true;
        m_handlers.aboutToShow();
    } else if (id == 0 && eventId == "closed"_L1) {
        m_wasOpened = false;
    }
    if (eventId == "clicked"_L1 && id > 0 && isKnown(id) && !m_lines.at(id - 1).isEmpty()) {
        m_handlers.clicked(id - 1);
    }
}

QList<int> StatusMenuAdaptor::EventGroup(const MenuEvents &events)
{
    QList<int> unknown;
    for (const MenuEvent &event : events) {
        if (!isKnown(event.id)) {
            unknown.append(event.id);
        }
        Event(event.id, event.name, event.data, event.timestamp);
    }
    return unknown;
}

bool StatusMenuAdaptor::AboutToShow(int id)
{
    // Some hosts call this as soon as they take the item, before they have read the menu. Some announce in
    // both ways that they show it.
    if (id == 0 && m_wasRead && !std::exchange(m_wasOpened, false)) {
        m_handlers.aboutToShow();
    }
    return false; // the host's layout is up to date
}

QList<int> StatusMenuAdaptor::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    for (const int id : ids) {
        if (!isKnown(id)) {
            idErrors.append(id);
        }
        AboutToShow(id);
    }
    return {};
}

} // namespace corvane
