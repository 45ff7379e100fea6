// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// A notification that waits for its moment. Dates are whole seconds since 1970, in UTC.
struct PendingRequest {
    QString identifier; ///< any text; one request at a time is pending under it
    QString title;      ///< plain text
    QString body;       ///< plain text
    QString categoryIdentifier;
    qint64 fireDate = 0;       ///< delivered from the beginning of this second on
    qint64 expirationDate = 0; ///< from this second on it is not delivered any more
    bool isQuiet = false;      ///< delivered without a sound

    friend bool operator==(const PendingRequest &, const PendingRequest &) = default;
};

} // namespace corvane
