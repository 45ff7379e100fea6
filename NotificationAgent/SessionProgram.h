// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionDisplay.h"

#include <QObject>
#include <QString>

namespace corvane {

/// The program that the agent serves, as seen by the session. Main thread only; signals are never emitted
/// from within a call.
class SessionProgram : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The program's unique bus name; empty while it is not running.
    [[nodiscard]] virtual QString owner() const = 0;

    /// Whether `display` still accepts a connection.
    [[nodiscard]] virtual bool isThere(const SessionDisplay &display) const = 0;

    /// Asks the session to start the program on `display`, never as a child of this process; startFailed()
    /// may follow.
    virtual void start(const SessionDisplay &display) = 0;

Q_SIGNALS:
    /// The program has left the bus, for whatever reason.
    void left();
    void startFailed(const QString &reason);
};

} // namespace corvane
