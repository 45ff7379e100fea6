// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

namespace corvane {

/// A panel's watcher of status items that shows nothing and records everything.
class StatusNotifierHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

public:
    /// Not on the bus until start().
    explicit StatusNotifierHost(QDBusConnection bus);
    ~StatusNotifierHost() override;

    void start();
    void stop();

    /// What items registered with, in order: their argument.
    QStringList registrations;
    /// The text of each label signal, in order.
    QStringList labels;
    int titleSignals = 0;
    int toolTipSignals = 0;

    /// The registered item's properties, asked for over the bus; empty when it does not answer.
    [[nodiscard]] QVariantMap properties(const QString &item);
    [[nodiscard]] QString introspection(const QString &item);
    /// As a panel does on a click.
    void activate(const QString &item, int x, int y);

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);

private Q_SLOTS:
    void newLabel(const QString &label, const QString &guide);
    void newTitle();
    void newToolTip();

private:
    QDBusConnection m_bus;
};

} // namespace corvane
