// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/DirectNotifications.h"

#include <QStringList>

namespace corvane {

/// A notification server that records what it shows. It refuses everything while `isThere` is false.
class FakeDirectNotifications final : public DirectNotifications {
public:
    bool isThere = true;
    QStringList shown; ///< "title: body"

    QCoro::Task<bool> showQuietly(QString title, QString body) override
    {
        if (isThere) {
            shown.append(title + QStringLiteral(": ") + body);
        }
        co_return isThere;
    }
};

} // namespace corvane
