// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <optional>

namespace corvane {

/// The machine's clock, and the one alarm that can be set on it. Main thread only.
class WallClock : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The second since 1970 that has begun, in UTC.
    [[nodiscard]] virtual qint64 now() const = 0;

    /// Sets the alarm to the beginning of `second`, in the place of the one that was set; nothing sets none.
    virtual void wakeAt(std::optional<qint64> second) = 0;

Q_SIGNALS:
    /// The alarm's second has come, or somebody has set the clock while the alarm was set: who set it looks
    /// at the clock and sets it anew. Never emitted from within a call.
    void woke();
};

} // namespace corvane
