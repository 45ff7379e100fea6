// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/DirectNotifications.h"

#include <QDBusConnection>

#include <chrono>

namespace corvane {

/// The notification server of the session bus, which the bus may start. Main thread only.
class DesktopNotifications final : public DirectNotifications {
public:
    /// On a bus that is not there nothing is shown. `timeout` is that of each of the two calls.
    explicit DesktopNotifications(QDBusConnection sessionBus,
                                  std::chrono::milliseconds timeout = std::chrono::seconds{5});

    QCoro::Task<bool> showQuietly(QString title, QString body) override;

private:
    static QCoro::Task<bool> show(QDBusConnection bus, int timeout, QString title, QString body);

    QDBusConnection m_bus;
    std::chrono::milliseconds m_timeout;
};

} // namespace corvane
