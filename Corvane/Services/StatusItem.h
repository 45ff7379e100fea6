// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// A line of the menu that the bell opens where it opens a menu.
struct StatusMenuEntry {
    QString text;                 ///< empty: a line between groups
    std::function<void()> action; ///< called on the main thread, after the menu has closed
};

/// The bell, with a few words beside it, in the desktop's status item host: the bar that shows such items.
/// Main thread only. Made by the application's entry, which hands on the view model's title whenever it
/// changes.
///
/// The adapter finds the host by itself, whenever it comes up or restarts.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The text beside the bell, or in its tool tip where the host shows no text. Plain text of any length.
    /// Nothing is published when it is the text already shown.
    virtual void setTitle(const QString &title) = 0;

    /// A further line for the tool tip and for a screen reader, below the title: plain text of any length, as
    /// empty as it is at first to take it away. Where the host shows neither, nothing else changes.
    virtual void setNotice(const QString &notice) = 0;

    /// The menu for hosts that open one on a click instead of telling of the click. The others never show
    /// it.
    virtual void setMenu(std::vector<StatusMenuEntry> entries) = 0;

    /// Whether a host is there that has taken the item.
    [[nodiscard]] virtual bool isShown() const = 0;

Q_SIGNALS:
    /// The item was clicked; `position` is where the host says that it happened, if it says so.
    /// `activationToken` is what it gave along to raise a window with, or empty.
    void activated(std::optional<corvane::Point> position, const QString &activationToken);

    /// The menu is about to be shown.
    void menuAboutToShow();

    /// isShown() has changed to `isShown`.
    void shownChanged(bool isShown);
};

} // namespace corvane
