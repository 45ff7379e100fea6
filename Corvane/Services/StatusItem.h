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

/// An entry of the native menu that a right click on the bell opens.
struct StatusMenuEntry {
    QString text;                 ///< empty: a separator
    std::function<void()> action; ///< called on the main thread, after the menu has closed
};

/// The bell, with a few words beside it, in the desktop's status item host (the bar that shows such items).
/// Main thread only. The application's entry point creates it and passes on the view model's title whenever
/// that changes.
///
/// The adapter finds the host by itself whenever one appears or restarts.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The text beside the bell, or in its tool tip if the host shows no text. Plain text of any length.
    /// Publishes nothing if the text is unchanged.
    virtual void setTitle(const QString &title) = 0;

    /// Another line for the tool tip and for screen readers, below the title: plain text of any length,
    /// initially empty; an empty text removes it. On hosts that show neither, it has no effect.
    virtual void setNotice(const QString &notice) = 0;

    /// The menu that the host opens on a right click. Some hosts open it on any click and report only double
    /// clicks.
    virtual void setMenu(std::vector<StatusMenuEntry> entries) = 0;

    /// Whether a host has accepted the item.
    [[nodiscard]] virtual bool isShown() const = 0;

Q_SIGNALS:
    /// The item was clicked; `position` is the place of the click, if known. `activationToken` is the host's
    /// token for raising a window, or empty.
    void activated(std::optional<corvane::Point> position, const QString &activationToken);

    /// The menu is about to be shown.
    void menuAboutToShow();

    /// isShown() has changed to `isShown`.
    void shownChanged(bool isShown);
};

} // namespace corvane
