// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionDisplay.h"

#include <QObject>
#include <QString>

namespace corvane {

/// The program that the agent belongs to, as the session knows it. Main thread only; signals are never
/// emitted from within a call.
class SessionProgram : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Who on the bus is the program: a unique name, or empty while it does not run.
    [[nodiscard]] virtual QString owner() const = 0;

    /// Whether `display` still accepts a connection.
    [[nodiscard]] virtual bool isThere(const SessionDisplay &display) const = 0;

    /// Has the session start the program on `display`, never as a child of this process; startFailed() may
    /// follow.
    virtual void start(const SessionDisplay &display) = 0;

Q_SIGNALS:
    /// The program has left the bus, however it ended.
    void left();
    void startFailed(const QString &reason);
};

} // namespace corvane
