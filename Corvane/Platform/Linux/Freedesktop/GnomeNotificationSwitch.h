// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Whether the switch that GNOME's settings keep for each application leaves the notifications of
/// `applicationId` on. True where there is no such switch. Main thread; a short local read, each time anew.
[[nodiscard]] bool gnomeAllowsNotifications(const QString &applicationId);

} // namespace corvane
