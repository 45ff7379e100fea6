// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// A notification that waits to be delivered. Dates are whole seconds since 1970 UTC.
struct PendingRequest {
    QString identifier; ///< any text; at most one request per identifier is pending
    QString title;      ///< plain text
    QString body;       ///< plain text
    QString categoryIdentifier;
    qint64 fireDate = 0;       ///< not delivered before the start of this second
    qint64 expirationDate = 0; ///< not delivered from this second on
    bool isQuiet = false;      ///< delivered without a sound

    friend bool operator==(const PendingRequest &, const PendingRequest &) = default;
};

} // namespace corvane
