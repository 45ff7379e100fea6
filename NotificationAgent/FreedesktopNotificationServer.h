// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/NotificationServer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QStringList>

#include <chrono>

class QDBusPendingCallWatcher;

namespace corvane {

class NotificationSound;

/// The desktop's notification server, org.freedesktop.Notifications on the session bus.
///
/// A server is asked for its capabilities before each delivery, which starts it where it can be started and
/// shows that it answers; the delivery then goes to exactly that server, by its own name on the bus. So what
/// it was handed is gone for certain once that name is gone.
class FreedesktopNotificationServer final : public NotificationServer {
    Q_OBJECT

public:
    struct Timeouts {
        std::chrono::milliseconds asking{10'000}; ///< a server may have to be started
        std::chrono::milliseconds delivering{25'000};
    };

    /// `sound` is borrowed; it is played where the server plays none.
    FreedesktopNotificationServer(QDBusConnection sessionBus, NotificationSound &sound, Timeouts timeouts,
                                  QObject *parent = nullptr);

    void ask() override;
    void deliver(const PendingRequest &request) override;

    /// The call that shows `request`, for a server of these capabilities.
    [[nodiscard]] static QVariantList notifyArguments(const PendingRequest &request,
                                                      const QStringList &capabilities);

private:
    void handleCapabilities(const QDBusMessage &reply);
    void handleOwner(const QDBusMessage &reply);
    void handleReply(const QDBusMessage &reply, bool isQuiet);
    void checkServerPresence(const QString &reason);

    QDBusConnection m_bus;
    NotificationSound &m_sound;
    Timeouts m_timeouts;
    QDBusServiceWatcher m_arrivals;
    QDBusServiceWatcher m_departure;
    QString m_server; ///< the unique name of the server that answered last
    QStringList m_capabilities;
};

} // namespace corvane
