// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Reports whether the machine runs on battery. Main thread only; used by the sleep guard. Driven by the
/// system's signals; never polls.
class PowerSource : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// False while unknown.
    [[nodiscard]] virtual bool isOnBattery() const = 0;

Q_SIGNALS:
    /// isOnBattery() changed; emitted once per change.
    void changed();
};

} // namespace corvane
