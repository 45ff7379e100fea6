// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QString>

namespace corvane {

/// A notification about the program itself, without a sound: due one to two seconds after `now`, because the
/// center rejects a second that has begun, and useless a quarter of an hour later. `kind` and the second make
/// its identifier.
[[nodiscard]] NotificationRequest quietNotice(const QString &kind, const QString &categoryIdentifier,
                                              const QString &title, const QString &body, Date now);

} // namespace corvane
