// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <optional>

namespace corvane {

/// The machine's clock and its one alarm. Main thread only.
class WallClock : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The current time in whole seconds since 1970 UTC, rounded down.
    [[nodiscard]] virtual qint64 now() const = 0;

    /// Sets the alarm to the start of `second`, replacing the previous one; nothing clears it.
    virtual void wakeAt(std::optional<qint64> second) = 0;

Q_SIGNALS:
    /// The alarm has fired, or the clock was set while the alarm was set: the receiver checks the clock and
    /// sets the alarm again. Never emitted from within a call.
    void woke();
};

} // namespace corvane
