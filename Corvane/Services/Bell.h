// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Models/LessonState.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/StatusItem.h"

#include <QObject>
#include <QString>

#include <optional>

namespace corvane {

/// Gives the status item its title and its notice. The action is published every second; the item is told
/// only if what its texts are made from has changed.
class Bell final : public QObject {
    Q_OBJECT

public:
    /// Borrows both. Tells the item at once.
    Bell(const MenuBarViewModel &viewModel, StatusItem &item, QObject *parent = nullptr);

    /// What the calendars lack, as the last sentence of the notice; initially empty.
    void setGaps(const QString &gaps);

private:
    /// All that the title and the notice depend on.
    struct Subject {
        LessonState state = LessonState::scheduled;
        std::optional<Lesson> lesson; ///< without its identifier, which each load changes
        bool hasBegun = false;
        QString gaps;

        friend bool operator==(const Subject &, const Subject &) = default;
    };

    void update();

    const MenuBarViewModel &m_viewModel;
    StatusItem &m_item;
    QString m_gaps;
    std::optional<Subject> m_told;
};

} // namespace corvane
