// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QHash>

namespace corvane {

/// The appearance that the desktop's settings portal reports. It is read when the portal appears on the bus;
/// afterwards the portal signals changes. Starts no portal. Motion is reduced if the portal's own setting or
/// GNOME's switch for animations says so, because not every portal has that setting.
class PortalAppearance final : public DesktopAppearance {
    Q_OBJECT

public:
    explicit PortalAppearance(const QDBusConnection &sessionBus, QObject *parent = nullptr);

    [[nodiscard]] Appearance appearance() const override { return m_told; }

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readAll();
    void read(const QString &group, const QString &key);
    void take(const QString &group, const QString &key, const QVariant &value);
    void publish();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    Appearance m_told;
    Appearance m_read;                          ///< without reducesMotion, which depends on two settings
    std::optional<bool> m_portalReducesMotion;  ///< the portal's own setting
    std::optional<bool> m_desktopReducesMotion; ///< GNOME's setting
    QHash<QString, int> m_heard;                ///< number of change signals per key
};

} // namespace corvane
