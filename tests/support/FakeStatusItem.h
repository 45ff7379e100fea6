// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QStringList>

namespace corvane {

/// A status item on no panel. It records what it was told and what a panel would have been told.
class FakeStatusItem final : public StatusItem {
    Q_OBJECT

public:
    using StatusItem::StatusItem;

    /// The titles handed in, in order, repetitions included.
    QStringList asked;

    /// The titles that a panel would have been told: each differs from the one before.
    QStringList published;

    void setTitle(const QString &title) override
    {
        asked.append(title);
        if (published.isEmpty() || published.constLast() != title) {
            published.append(title);
        }
    }

    /// The teacher clicks the item.
    void click(std::optional<Point> position = std::nullopt) { Q_EMIT activated(position); }
};

} // namespace corvane
