// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/DateProviding.h"

#include <optional>
#include <vector>

namespace corvane {

/// From today's lessons and a moment: the one thing that the teacher should do then.
///
/// A value without state between calls; may be called from any thread. The view model calls it once a second
/// and after each reload.
class LessonWorkflowEngine {
public:
    explicit LessonWorkflowEngine(const DateProviding &dateProvider) : m_dateProvider(&dateProvider) {}

    /// The action for `lessons` (any order, overlapping or not) at `date`, or at the system's present time
    /// when none is given. Of lessons that start together the first in the list comes first. Never fails.
    [[nodiscard]] TeachingAction action(const std::vector<Lesson> &lessons,
                                        std::optional<Date> date = std::nullopt) const;

    /// "Join Zoom now"; a lesson on no named platform is joined by its student's name.
    [[nodiscard]] static QString joinMessage(const Lesson &lesson);

    /// The student whom an action's `message` names; nothing where it names none.
    [[nodiscard]] static std::optional<QString> studentIn(const QString &message);

private:
    [[nodiscard]] static QString wrapUpMessage(const Lesson *lesson);
    [[nodiscard]] static std::optional<Date> nextTransitionDate(const Lesson &current, const Lesson *upcoming,
                                                                Date now);

    /// Not read: each service is built with the shared clock, but an action is for the moment asked for.
    [[maybe_unused]] const DateProviding *m_dateProvider;
};

} // namespace corvane
