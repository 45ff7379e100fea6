// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/StatusMenuAdaptor.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <utility>

namespace corvane {

/// A watcher of status items together with its host, which shows nothing and records everything.
class StatusNotifierHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost SCRIPTABLE true)

public:
    /// Takes the watcher's bus name only with start().
    explicit StatusNotifierHost(QDBusConnection bus);
    ~StatusNotifierHost() override;

    void start();
    void stop();

    /// Sets whether the watcher has a host that shows the items; initially it has.
    void setHasHost(bool hasHost);
    [[nodiscard]] bool hasHost() const { return m_hasHost; }

    /// While `isSilent`, registrations are recorded but never answered; while `refuses`, they fail.
    bool isSilent = false;
    bool refuses = false;

    /// The argument of each registration, in order.
    QStringList registrations;
    /// The text of each label signal, in order.
    QStringList labels;
    /// The label beside the icon. The host reads it when it takes the item, and draws it only when it changes
    /// after that. A stopped host draws none.
    QString drawnLabel;
    /// How often the host has read the label.
    int labelReads = 0;
    /// While true, the host takes items but reads no label before readLabel() is called.
    bool readsLate = false;
    void readLabel(const QString &item);
    int titleSignals = 0;
    int toolTipSignals = 0;

    /// The item's properties, read over the bus; empty if it does not answer.
    [[nodiscard]] QVariantMap properties(const QString &item);
    /// The lines of its tool tip as plain text.
    [[nodiscard]] QStringList toolTip(const QString &item);
    [[nodiscard]] QString introspection(const QString &item);
    /// Activates the item as a host does on a click, with y downwards.
    void activate(const QString &item, int x, int y);
    /// Provides the activation token for the next click.
    void giveToken(const QString &item, const QString &token);

    /// The revision and the parent of each LayoutUpdated signal, in order.
    QList<std::pair<uint, int>> layouts;

    /// Sends a call and waits for the answer, for at most 5 s.
    QDBusMessage ask(const QDBusMessage &message);
    /// Calls the item's menu and waits for the answer.
    QDBusMessage askMenu(const QString &item, const QString &method, const QVariantList &arguments);
    /// The whole menu, with the id -1 if there is none. Sets `revision`, if given, to its revision.
    MenuLayout menu(const QString &item, uint *revision = nullptr);
    /// The texts of the menu that a right click opens. The host takes any path for a menu's, and opens an
    /// empty menu if there is none.
    QStringList rightClick(const QString &item);
    /// Opens the menu as a host does, and clicks the entry `id`.
    void openMenu(const QString &item);
    void chooseLine(const QString &item, int id);

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);

Q_SIGNALS:
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private Q_SLOTS:
    void newLayout(uint revision, int parent);
    void newLabel(const QString &label, const QString &guide);
    void newTitle();
    void newToolTip();

private:
    QDBusConnection m_bus;
    QString m_readLabel; ///< the text as the host knows it
    bool m_hasHost = true;
};

} // namespace corvane
