// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionProgram.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>

#include <optional>

namespace corvane {

/// The program as the owner of its bus name, started by the session bus.
class BusProgram final : public SessionProgram {
    Q_OBJECT

public:
    static constexpr auto serviceName = "com.ordwinsoftware.Quillet";

    /// From now on the name is watched; who owns it is known before anything that arrives later.
    explicit BusProgram(QDBusConnection sessionBus, QObject *parent = nullptr);

    [[nodiscard]] QString owner() const override;
    [[nodiscard]] bool isThere(const SessionDisplay &display) const override;
    void start(const SessionDisplay &display) override;

private:
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    QDBusPendingCall m_firstOwner;  ///< the bus's answer to the question at the start
    std::optional<QString> m_owner; ///< what was told since
};

} // namespace corvane
