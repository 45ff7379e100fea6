// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Whether GNOME's per-application switch allows the notifications of `applicationId`. True if there is no
/// such switch. Main thread; each call does a short local read.
[[nodiscard]] bool gnomeAllowsNotifications(const QString &applicationId);

} // namespace corvane
