// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/DirectNotifications.h"

#include <QDBusConnection>

#include <chrono>

namespace corvane {

/// Uses the notification server of the session bus, which the bus may start. Main thread only.
class DesktopNotifications final : public DirectNotifications {
public:
    /// Without a bus nothing is shown. `timeout` applies to each of the two calls.
    explicit DesktopNotifications(QDBusConnection sessionBus,
                                  std::chrono::milliseconds timeout = std::chrono::seconds{5});

    QCoro::Task<bool> showQuietly(QString title, QString body) override;

private:
    static QCoro::Task<bool> show(QDBusConnection bus, int timeout, QString title, QString body);

    QDBusConnection m_bus;
    std::chrono::milliseconds m_timeout;
};

} // namespace corvane
