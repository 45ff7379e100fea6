// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestQueue.h"

#include <utility>

namespace corvane {

namespace {

qint64 textSize(const PendingRequest &request)
{
    return request.identifier.size() + request.title.size() + request.body.size() +
           request.categoryIdentifier.size();
}

} // namespace

void RequestQueue::add(const PendingRequest &request)
{
    take(request.identifier);
    const quint64 arrival = m_arrivals++;
    m_items.insert(request.identifier, {request, arrival});
    m_order.insert({request.fireDate, arrival}, request.identifier);
    m_textSize += textSize(request);
}

std::optional<PendingRequest> RequestQueue::take(const QString &identifier)
{
    const auto found = m_items.find(identifier);
    if (found == m_items.end()) {
        return std::nullopt;
    }
    Item item = std::move(*found);
    m_items.erase(found);
    m_order.remove({item.request.fireDate, item.arrival});
    m_textSize -= textSize(item.request);
    return std::move(item.request);
}

qint64 RequestQueue::textSizeWithout(const QString &identifier) const
{
    const auto found = m_items.constFind(identifier);
    return m_textSize - (found == m_items.constEnd() ? 0 : textSize(found->request));
}

QStringList RequestQueue::identifiers() const
{
    return m_order.values();
}

std::vector<PendingRequest> RequestQueue::requests() const
{
    std::vector<PendingRequest> all;
    all.reserve(static_cast<std::size_t>(m_items.size()));
    for (const QString &identifier : m_order) {
        all.push_back(m_items.constFind(identifier)->request);
    }
    return all;
}

std::optional<PendingRequest> RequestQueue::firstDue(qint64 now, const QSet<QString> &except) const
{
    for (auto place = m_order.constBegin(); place != m_order.constEnd() && place.key().first <= now;
         ++place) {
        if (!except.contains(place.value())) {
            return m_items.constFind(place.value())->request;
        }
    }
    return std::nullopt;
}

std::vector<PendingRequest> RequestQueue::due(qint64 now) const
{
    std::vector<PendingRequest> due;
    for (auto place = m_order.constBegin(); place != m_order.constEnd() && place.key().first <= now;
         ++place) {
        due.push_back(m_items.constFind(place.value())->request);
    }
    return due;
}

std::vector<PendingRequest> RequestQueue::takeExpired(qint64 now)
{
    std::vector<PendingRequest> expired;
    while (!m_order.isEmpty()) {
        const PendingRequest first = m_items.constFind(m_order.first())->request;
        if (first.fireDate > now || first.expirationDate > now) {
            break;
        }
        take(first.identifier);
        expired.push_back(first);
    }
    return expired;
}

std::optional<qint64> RequestQueue::nextFireDate(qint64 now) const
{
    const auto next = m_order.lowerBound({now + 1, 0});
    return next == m_order.constEnd() ? std::nullopt : std::optional(next.key().first);
}

} // namespace corvane
