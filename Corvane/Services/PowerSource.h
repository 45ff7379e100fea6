// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Tells whether the machine runs on its battery. Main thread only; used by the sleep guard. It is told by
/// the system and asks nothing again and again.
class PowerSource : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// False until it is known, and where nobody tells.
    [[nodiscard]] virtual bool isOnBattery() const = 0;

Q_SIGNALS:
    /// isOnBattery() changed; once per change.
    void changed();
};

} // namespace corvane
