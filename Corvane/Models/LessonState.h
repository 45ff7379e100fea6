// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// The phase of the teaching workflow that an action belongs to.
enum class LessonState {
    scheduled,        ///< nothing to do now
    wrapUp,           ///< the current lesson is in its last minute
    prepare,          ///< the next lesson starts within its preparation lead time
    oneMinuteWarning, ///< one minute before the next lesson
    joinPlatform,     ///< time to open the platform and join
    startNow,         ///< the lesson starts within 20 seconds, or started less than 5 seconds ago
    teaching,         ///< a lesson is in progress
    feedback,         ///< never produced by the engine; has a menu-bar title
    completed,        ///< never produced by the engine; has a menu-bar title
};

/// All states in declaration order.
inline constexpr std::array allLessonStates{
    LessonState::scheduled,        LessonState::wrapUp,       LessonState::prepare,
    LessonState::oneMinuteWarning, LessonState::joinPlatform, LessonState::startNow,
    LessonState::teaching,         LessonState::feedback,     LessonState::completed};

/// The state's name, for example "oneMinuteWarning"; used in log lines and keys.
[[nodiscard]] QString rawValue(LessonState state);

/// The state with exactly this name, or none.
[[nodiscard]] std::optional<LessonState> lessonState(const QString &rawValue);

} // namespace corvane
