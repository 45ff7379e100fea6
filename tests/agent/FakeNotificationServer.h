// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/NotificationServer.h"

#include <QMetaObject>
#include <QStringList>

#include <functional>

namespace corvane {

/// Behaves as the test sets it, and records what it was asked.
class FakeNotificationServer final : public NotificationServer {
    Q_OBJECT

public:
    void ask() override
    {
        ++asked;
        if (!isSilent) {
            QMetaObject::invokeMethod(this, &FakeNotificationServer::answer, Qt::QueuedConnection);
        }
    }

    void deliver(const PendingRequest &request) override
    {
        handed.append(request.identifier);
        if (onDeliver) {
            onDeliver(request);
        }
        if (isSlow) {
            return;
        }
        const Outcome result = outcome;
        QMetaObject::invokeMethod(
            this, [this, result] { Q_EMIT finished(result, QStringLiteral("as told")); },
            Qt::QueuedConnection);
    }

    /// Answers the pending ask().
    void answer() { Q_EMIT answered(isThere, QStringLiteral("as told")); }

    /// Finishes the pending deliver().
    void finishNow() { Q_EMIT finished(outcome, QStringLiteral("as told")); }

    bool isThere = true;
    bool isSilent = false; ///< the test calls answer()
    bool isSlow = false;   ///< the test calls finishNow()
    Outcome outcome = Outcome::shown;
    std::function<void(const PendingRequest &)> onDeliver;

    int asked = 0;
    QStringList handed; ///< identifiers, in order
};

} // namespace corvane
