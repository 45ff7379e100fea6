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

/// The requests that are pending, in the order of their fire dates; those of one second in the order in which
/// they came. A value: a copy is a snapshot, and costs something only when one of the two changes.
class RequestQueue {
public:
    /// Puts `request` in; one of the same identifier is replaced.
    void add(const PendingRequest &request);

    /// Takes the request of this identifier out, if there is one.
    std::optional<PendingRequest> take(const QString &identifier);

    [[nodiscard]] bool contains(const QString &identifier) const { return m_items.contains(identifier); }
    [[nodiscard]] bool isEmpty() const { return m_items.isEmpty(); }
    [[nodiscard]] qsizetype size() const { return m_items.size(); }

    /// How much text all requests hold together, in UTF-16 code units; what a replacement of the request
    /// under `identifier` would free is not counted.
    [[nodiscard]] qint64 textSizeWithout(const QString &identifier) const;

    [[nodiscard]] QStringList identifiers() const;
    [[nodiscard]] std::vector<PendingRequest> requests() const;

    /// The first request that is due at `now` (in seconds since 1970) and not named in `except`.
    [[nodiscard]] std::optional<PendingRequest> firstDue(qint64 now, const QSet<QString> &except) const;

    /// All that are due at `now`.
    [[nodiscard]] std::vector<PendingRequest> due(qint64 now) const;

    /// Takes out the requests that are due at `now` and have expired by then, up to the first that has not.
    [[nodiscard]] std::vector<PendingRequest> takeExpired(qint64 now);

    /// The earliest fire date after `now`.
    [[nodiscard]] std::optional<qint64> nextFireDate(qint64 now) const;

    friend bool operator==(const RequestQueue &one, const RequestQueue &other)
    {
        return one.requests() == other.requests();
    }

private:
    using Place = std::pair<qint64, quint64>; // fire date, number of arrival
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
