// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"

#include <QObject>
#include <QString>

namespace corvane {

/// Shows notifications on the desktop. Main thread only. At most one ask() or deliver() is in progress at a
/// time; signals are never emitted from within a call.
class NotificationServer : public QObject {
    Q_OBJECT

public:
    enum class Outcome {
        shown,    ///< confirmed by the server
        notShown, ///< no server has it; may be delivered again
        unknown   ///< the server has it but did not answer; may still show it until it leaves
    };

    using QObject::QObject;

    /// Checks that a server is there and answers, starting one if possible; emits answered() once.
    virtual void ask() = 0;

    /// Gives `request` to the server that answered last; emits finished() once.
    virtual void deliver(const PendingRequest &request) = 0;

Q_SIGNALS:
    /// `reason` says, for the log, why there is no server.
    void answered(bool isThere, const QString &reason);
    void finished(corvane::NotificationServer::Outcome outcome, const QString &reason);

    /// A server has appeared on the bus.
    void arrived();

    /// The server that was asked last has left, and everything it was given is gone.
    void left();

    /// Another server has replaced the one that was asked last, which is still running: the fate of what that
    /// one was given will never be known.
    void replaced();
};

} // namespace corvane
