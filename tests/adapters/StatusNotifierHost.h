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

/// A watcher of status items, with the host that shows them: it shows nothing and records
/// everything.
class StatusNotifierHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost SCRIPTABLE true)

public:
    /// Not on the bus until start().
    explicit StatusNotifierHost(QDBusConnection bus);
    ~StatusNotifierHost() override;

    void start();
    void stop();

    /// Whether a host shows what the watcher knows; at first one does.
    void setHasHost(bool hasHost);
    [[nodiscard]] bool hasHost() const { return m_hasHost; }

    /// While true, registrations are noted and never answered; while `refuses` is, they are refused.
    bool isSilent = false;
    bool refuses = false;

    /// What items registered with, in order: their argument.
    QStringList registrations;
    /// The text of each label signal, in order.
    QStringList labels;
    int titleSignals = 0;
    int toolTipSignals = 0;

    /// The registered item's properties, asked for over the bus; empty when it does not answer.
    [[nodiscard]] QVariantMap properties(const QString &item);
    /// The lines of its tool tip, as they are shown.
    [[nodiscard]] QStringList toolTip(const QString &item);
    [[nodiscard]] QString introspection(const QString &item);
    /// As a host does on a click.
    void activate(const QString &item, int x, int y);
    /// What comes ahead of a click that may raise a window.
    void giveToken(const QString &item, const QString &token);

    /// The revision and the parent of each signal of a new menu, in order.
    QList<std::pair<uint, int>> layouts;

    /// Sends a call, and waits for the answer.
    QDBusMessage ask(const QDBusMessage &message);
    /// Calls the item's menu, and waits for the answer.
    QDBusMessage askMenu(const QString &item, const QString &method, const QVariantList &arguments);
    /// The whole menu, and in `revision`, if wanted, its revision.
    MenuLayout menu(const QString &item, uint *revision = nullptr);
    /// As a host does when it opens the menu, and when a line of it is clicked.
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
    bool m_hasHost = true;
};

} // namespace corvane
