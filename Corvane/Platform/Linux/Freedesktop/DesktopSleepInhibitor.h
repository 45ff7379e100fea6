// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SleepInhibitor.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <qcoro/qcorotask.h>

#include <QDBusConnection>
#include <QObject>
#include <QPointer>
#include <QVariant>

#include <cstddef>
#include <optional>

class QDBusMessage;

namespace corvane {

/// Holds off automatic sleep through the first service that accepts the request: the desktop's portal, the
/// session manager, the desktop's power manager, or logind, whose "idle" lock holds off only what logind
/// itself does after a while without input. Starts none of them. A service that appears later is asked as
/// well and takes over from those after it. Main thread only.
class DesktopSleepInhibitor final : public QObject, public SleepInhibitor {
    Q_OBJECT

public:
    /// A bus without a connection has no services. `logger` is borrowed.
    DesktopSleepInhibitor(QDBusConnection sessionBus, QDBusConnection systemBus, DebugLogService &logger,
                          QObject *parent = nullptr);
    ~DesktopSleepInhibitor() override;

    void keepAwake() override;
    void letSleep() override;

private:
    using Self = QPointer<DesktopSleepInhibitor>;

    /// An accepted request, and what releases it.
    struct Hold {
        std::size_t service = 0; ///< its index in the order in which the services are asked
        QVariant ticket;         ///< a number, the path of a request, or a file descriptor
    };

    static QCoro::Task<void> acquire(Self self, int attempt, std::size_t first);
    [[nodiscard]] QDBusConnection busOf(std::size_t service) const;
    void ask(std::size_t first);
    void take(Hold hold);
    void handleOwnerChange(std::size_t service, bool isThere);

    QDBusConnection m_sessionBus;
    QDBusConnection m_systemBus;
    DebugLogService &m_logger;
    bool m_isWanted = false;
    int m_attempt = 0; ///< what an earlier attempt obtains is released
    std::optional<Hold> m_hold;

private Q_SLOTS:
    /// The portal's second answer to a request: only this one says that the desktop cannot do it.
    void handlePortalResponse(const QDBusMessage &message);
};

} // namespace corvane
