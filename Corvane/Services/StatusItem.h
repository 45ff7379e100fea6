// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Geometry.h"

#include <QObject>
#include <QString>

#include <optional>

namespace corvane {

/// The bell in the desktop's panel with a few words beside it. Main thread only. Made by the application's
/// entry, which hands on the view model's title whenever it changes.
///
/// The adapter finds the panel by itself, whenever it comes up or restarts.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The text beside the bell, or in its tool tip where the panel shows no text. Plain text of any length.
    /// Nothing is published when it is the text already shown.
    virtual void setTitle(const QString &title) = 0;

Q_SIGNALS:
    /// The item was clicked; `position` is where the panel says that it happened, if it says so.
    void activated(std::optional<corvane::Point> position);
};

} // namespace corvane
