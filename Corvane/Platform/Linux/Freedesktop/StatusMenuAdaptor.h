// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <functional>

class QDBusMessage;

namespace corvane {

/// The properties of one menu line, as sent over the bus.
struct MenuLineProperties {
    int id = 0;
    QVariantMap properties;
};
using MenuLinesProperties = QList<MenuLineProperties>;

/// A menu line with its sublines, as sent over the bus.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

/// Something that happened to a menu line, as sent over the bus.
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};
using MenuEvents = QList<MenuEvent>;

/// Properties that a menu line no longer has, as sent over the bus.
struct MenuLineRemovals {
    int id = 0;
    QStringList names;
};
using MenuLinesRemovals = QList<MenuLineRemovals>;

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLineProperties &line);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLineProperties &line);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuLineRemovals &removals);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLineRemovals &removals);

} // namespace corvane

Q_DECLARE_METATYPE(corvane::MenuLineProperties)
Q_DECLARE_METATYPE(corvane::MenuLayout)
Q_DECLARE_METATYPE(corvane::MenuEvent)
Q_DECLARE_METATYPE(corvane::MenuLineRemovals)

namespace corvane {

/// A single-level menu on the bus; the interface determines the names. Line 0 is the menu itself; the others
/// count from 1.
class StatusMenuAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// Called for the host's requests. Not signals, because those of an adaptor are sent on the bus.
    struct Handlers {
        std::function<void()> aboutToShow;
        std::function<void(int index)> clicked; ///< the index in the list of texts
    };

    /// For an object that will be on `bus`.
    StatusMenuAdaptor(QObject *parent, QDBusConnection bus, Handlers handlers);

    /// Another host has taken the item and has not read the menu yet.
    void hostChanged() { m_wasRead = false; }

    /// Sets the lines from top to bottom; an empty text is a separator.
    void setLines(const QStringList &texts);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   const QDBusMessage &message, corvane::MenuLayout &layout);
    corvane::MenuLinesProperties GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name, const QDBusMessage &message);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const corvane::MenuEvents &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const corvane::MenuLinesProperties &updatedProps,
                                const corvane::MenuLinesRemovals &removedProps);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    [[nodiscard]] bool isKnown(int id) const { return id >= 0 && id <= m_lines.size(); }
    [[nodiscard]] QVariantMap propertiesOf(int id, const QStringList &names) const;

    void refuse(const QDBusMessage &message, const QString &reason);

    QDBusConnection m_bus;
    Handlers m_handlers;
    QStringList m_lines;
    uint m_revision = 1;
    bool m_wasRead = false;   ///< whether a host has read the lines since it took the item
    bool m_wasOpened = false; ///< whether the host has sent `opened`, and may call AboutToShow for it as well
};

} // namespace corvane
