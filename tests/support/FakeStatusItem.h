// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// A status item without a host. It records what it was told and what it would publish to a host.
class FakeStatusItem final : public StatusItem {
    Q_OBJECT

public:
    using StatusItem::StatusItem;

    /// The titles set, in order, including repetitions.
    QStringList asked;

    /// The titles that a host would receive: each differs from the previous one.
    QStringList published;

    void setTitle(const QString &title) override
    {
        asked.append(title);
        if (published.isEmpty() || published.constLast() != title) {
            published.append(title);
        }
    }

    /// The notices set, in order, including repetitions.
    QStringList askedNotices;

    /// The current notice.
    QString notice;

    void setNotice(const QString &text) override
    {
        askedNotices.append(text);
        notice = text;
    }
    void setMenu(std::vector<StatusMenuEntry> entries) override { menu = std::move(entries); }
    [[nodiscard]] bool isShown() const override { return shown; }

    std::vector<StatusMenuEntry> menu;
    bool shown = true;

    /// A host comes or goes.
    void setShown(bool isShown)
    {
        if (isShown != shown) {
            shown = isShown;
            Q_EMIT shownChanged(isShown);
        }
    }

    /// The teacher clicks the item.
    void click(std::optional<Point> position = std::nullopt, const QString &token = {})
    {
        Q_EMIT activated(position, token);
    }

    /// The teacher opens the menu.
    void openMenu() { Q_EMIT menuAboutToShow(); }

    /// The teacher chooses the entry at `index`; a separator does nothing.
    void choose(std::size_t index)
    {
        if (const auto action = menu.at(index).action; action && !menu.at(index).text.isEmpty()) {
            action();
        }
    }
};

} // namespace corvane
