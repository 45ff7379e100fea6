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

/// A notification that the desktop is to show at its moment, with the system's own sound for notifications
/// unless it is a quiet one, whether the program runs by then or not.
struct NotificationRequest {
    QString identifier; ///< any text; one request at a time is pending under it
    QString title;      ///< plain text
    QString body;       ///< plain text
    QString categoryIdentifier;
    Date fireDate;        ///< cut to its whole second
    Date expirationDate;  ///< from then on it helps nobody: a machine that slept until then does not show it
    bool isQuiet = false; ///< it comes without a sound

    friend bool operator==(const NotificationRequest &, const NotificationRequest &) = default;
};

/// What keeps dated notifications for the program and shows them, also when the program does not run. Main
/// thread only; used by the backup scheduler and by those who tell of what is missing.
///
/// Calls are carried out in the order in which they were made, and answer when what they did outlives the
/// program and the machine's next start. Each ends within 30 seconds, whatever hangs.
class UserNotificationCenter {
public:
    virtual ~UserNotificationCenter() = default;

    /// Asks to show notifications with sound: whether that is granted. Asked anew each time, so that a change
    /// of mind is noticed.
    virtual QCoro::Task<std::expected<bool, Failure>> requestAuthorization() = 0;

    /// The identifiers of the requests whose moment has not come.
    virtual QCoro::Task<std::expected<QStringList, Failure>> pendingNotificationRequests() = 0;

    /// Takes back pending requests; an identifier that is not pending is passed over. What has been shown
    /// stays.
    virtual QCoro::Task<std::expected<void, Failure>>
    removePendingNotificationRequests(QStringList identifiers) = 0;

    /// Keeps `request` until its moment; it replaces one pending under the same identifier.
    virtual QCoro::Task<std::expected<void, Failure>> add(NotificationRequest request) = 0;
};

} // namespace corvane
