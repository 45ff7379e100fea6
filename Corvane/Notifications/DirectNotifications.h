// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QString>

namespace corvane {

/// Shows notifications through the desktop itself, without the agent. Main thread only; used by the check
/// before the first lesson, which may find that the agent is missing.
class DirectNotifications {
public:
    virtual ~DirectNotifications() = default;

    /// Shows a plain-text notification now, without a sound, and returns whether the desktop accepted it.
    /// Ends within 10 seconds.
    virtual QCoro::Task<bool> showQuietly(QString title, QString body) = 0;
};

} // namespace corvane
