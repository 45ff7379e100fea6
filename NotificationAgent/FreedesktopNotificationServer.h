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
/// Each delivery first asks a server for its capabilities, which starts it if possible and proves that it
/// answers. The delivery then goes to exactly that server, by its unique name, so everything that it was
/// given is certainly gone once that name is gone.
class FreedesktopNotificationServer final : public NotificationServer {
    Q_OBJECT

public:
    struct Timeouts {
        std::chrono::milliseconds asking{10'000}; ///< includes the start of a server
        std::chrono::milliseconds delivering{25'000};
    };

    /// Borrows `sound`, which is played if the server plays none.
    FreedesktopNotificationServer(QDBusConnection sessionBus, NotificationSound &sound, Timeouts timeouts,
                                  QObject *parent = nullptr);

    void ask() override;
    void deliver(const PendingRequest &request) override;

    /// The arguments of the call that shows `request` on a server with these capabilities.
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
