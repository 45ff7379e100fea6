// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"

#include <QObject>
#include <QString>

namespace corvane {

/// What shows notifications on the desktop. Main thread only. One question or delivery is under way at a
/// time; signals are never emitted from within a call.
class NotificationServer : public QObject {
    Q_OBJECT

public:
    enum class Outcome {
        shown,    ///< the server has said so
        notShown, ///< nobody has it: it may be delivered again
        unknown   ///< the server has it and says nothing: it may show it still, until it leaves
    };

    using QObject::QObject;

    /// Looks whether a server is there and answers, starting one where that is possible; answered() follows,
    /// once.
    virtual void ask() = 0;

    /// Hands `request` to the server that has just answered; finished() follows, once.
    virtual void deliver(const PendingRequest &request) = 0;

Q_SIGNALS:
    /// `reason` says why there is none, for the log.
    void answered(bool isThere, const QString &reason);
    void finished(corvane::NotificationServer::Outcome outcome, const QString &reason);

    /// A server has come to the bus.
    void arrived();

    /// The server that was asked last has gone, and with it all that it was handed.
    void left();

    /// Another server has taken its place while it lives on: nobody will know what becomes of what it was
    /// handed.
    void replaced();
};

} // namespace corvane
