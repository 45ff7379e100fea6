// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QHash>

namespace corvane {

/// The appearance as the desktop's settings portal tells it. It is asked when it comes onto the bus, and
/// tells of changes itself; no portal is started for it. Where the portal knows nothing of reduced motion,
/// GNOME's switch for animations stands in.
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
    Appearance m_read;                          ///< without the motion, which two settings tell of
    std::optional<bool> m_portalReducesMotion;  ///< what the portal's own setting says
    std::optional<bool> m_desktopReducesMotion; ///< and what GNOME's does
    QHash<QString, int> m_heard;                ///< how often a key's change was told
};

} // namespace corvane
