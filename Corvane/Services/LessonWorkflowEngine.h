// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/DateProviding.h"

#include <optional>
#include <vector>

namespace corvane {

/// Computes what the teacher should do at a given moment, from today's lessons.
///
/// Keeps no state between calls; any thread may call it. The view model calls it once a second and after each
/// reload.
class LessonWorkflowEngine {
public:
    explicit LessonWorkflowEngine(const DateProviding &dateProvider) : m_dateProvider(&dateProvider) {}

    /// The action for `lessons` (any order, possibly overlapping) at `date`, or at the system's current time.
    /// Of lessons that start together, the first in the list wins. Never fails.
    [[nodiscard]] TeachingAction action(const std::vector<Lesson> &lessons,
                                        std::optional<Date> date = std::nullopt) const;

    /// "Join Zoom now"; for a lesson without a named platform, the student's name instead.
    [[nodiscard]] static QString joinMessage(const Lesson &lesson);

    /// The student that an action's `message` names, if any.
    [[nodiscard]] static std::optional<QString> studentIn(const QString &message);

private:
    [[nodiscard]] static QString wrapUpMessage(const Lesson *lesson);
    [[nodiscard]] static std::optional<Date> nextTransitionDate(const Lesson &current, const Lesson *upcoming,
                                                                Date now);

    /// Unused: every service gets the shared clock, but an action is for the moment passed in.
    [[maybe_unused]] const DateProviding *m_dateProvider;
};

} // namespace corvane
