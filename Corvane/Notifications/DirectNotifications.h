// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QString>

namespace corvane {

/// The desktop's notifications without the agent in between. Main thread only; used by the look before the
/// first lesson, which may find that the agent is what is missing.
class DirectNotifications {
public:
    virtual ~DirectNotifications() = default;

    /// Shows a notification of plain text now, without a sound, and answers whether the desktop took it;
    /// within 10 seconds, whatever hangs.
    virtual QCoro::Task<bool> showQuietly(QString title, QString body) = 0;
};

} // namespace corvane
