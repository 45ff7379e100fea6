// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// The pending requests, sorted by fire date, then by arrival. A value type: a copy is a snapshot, and costs
/// something only when one of the two changes.
class RequestQueue {
public:
    /// Adds `request`, replacing one with the same identifier.
    void add(const PendingRequest &request);

    /// Removes and returns the request with this identifier, if any.
    std::optional<PendingRequest> take(const QString &identifier);

    [[nodiscard]] bool contains(const QString &identifier) const { return m_items.contains(identifier); }
    [[nodiscard]] bool isEmpty() const { return m_items.isEmpty(); }
    [[nodiscard]] qsizetype size() const { return m_items.size(); }

    /// The length of all texts together, in UTF-16 code units, without the request `identifier`, which may be
    /// about to be replaced.
    [[nodiscard]] qint64 textSizeWithout(const QString &identifier) const;

    [[nodiscard]] QStringList identifiers() const;
    [[nodiscard]] std::vector<PendingRequest> requests() const;

    /// The first request that is due at `now` (seconds since 1970 UTC) and not in `except`.
    [[nodiscard]] std::optional<PendingRequest> firstDue(qint64 now, const QSet<QString> &except) const;

    /// All requests that are due at `now`.
    [[nodiscard]] std::vector<PendingRequest> due(qint64 now) const;

    /// Removes and returns the requests that are due at `now` and have expired, up to the first that has not.
    [[nodiscard]] std::vector<PendingRequest> takeExpired(qint64 now);

    /// The earliest fire date after `now`.
    [[nodiscard]] std::optional<qint64> nextFireDate(qint64 now) const;

    friend bool operator==(const RequestQueue &one, const RequestQueue &other)
    {
        return one.requests() == other.requests();
    }

private:
    using Place = std::pair<qint64, quint64>; // fire date, arrival number
    struct Item {
        PendingRequest request;
        quint64 arrival = 0;
    };

    QHash<QString, Item> m_items;
    QMap<Place, QString> m_order;
    quint64 m_arrivals = 0;
    qint64 m_textSize = 0;
};

} // namespace corvane
