// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionProgram.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>

#include <optional>

namespace corvane {

/// The program, identified by its bus name and started by the session bus.
class BusProgram final : public SessionProgram {
    Q_OBJECT

public:
    /// Watches the name from now on; its owner is known before any later message is handled.
    explicit BusProgram(QDBusConnection sessionBus, QObject *parent = nullptr);

    [[nodiscard]] QString owner() const override;
    [[nodiscard]] bool isThere(const SessionDisplay &display) const override;
    void start(const SessionDisplay &display) override;

private:
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    QDBusPendingCall m_firstOwner;  ///< the bus's reply about the owner at construction
    std::optional<QString> m_owner; ///< the owner after the first change
};

} // namespace corvane
