// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Failure.h"

#include <qcoro/qcorotask.h>

#include <QString>
#include <QStringList>

#include <expected>

namespace corvane {

/// A notification to be shown at a given time, with the system's notification sound unless it is quiet,
/// whether or not the program is running by then.
struct NotificationRequest {
    QString identifier; ///< any text; at most one request per identifier is pending
    QString title;      ///< plain text
    QString body;       ///< plain text
    QString categoryIdentifier;
    Date fireDate;        ///< truncated to the whole second
    Date expirationDate;  ///< from then on it is useless: a machine that slept until then does not show it
    bool isQuiet = false; ///< shown without a sound

    friend bool operator==(const NotificationRequest &, const NotificationRequest &) = default;
};

/// Keeps dated notifications for the program and shows them, even when the program is not running. Main
/// thread only; used by the backup scheduler and by the notices about what is missing.
///
/// Calls are carried out in the order in which they were made. Each completes once its effect is durable,
/// even across a reboot, and within 35 seconds in any case.
class UserNotificationCenter {
public:
    virtual ~UserNotificationCenter() = default;

    /// Requests permission to show notifications with sound and returns whether it is granted. Asked anew
    /// each time, so that a change of mind is noticed.
    virtual QCoro::Task<std::expected<bool, Failure>> requestAuthorization() = 0;

    /// The identifiers of the requests that are not yet due.
    virtual QCoro::Task<std::expected<QStringList, Failure>> pendingNotificationRequests() = 0;

    /// Withdraws pending requests; identifiers that are not pending are ignored. Notifications already shown
    /// stay.
    virtual QCoro::Task<std::expected<void, Failure>>
    removePendingNotificationRequests(QStringList identifiers) = 0;

    /// Keeps `request` until it is due, replacing a pending one with the same identifier.
    virtual QCoro::Task<std::expected<void, Failure>> add(NotificationRequest request) = 0;
};

} // namespace corvane
