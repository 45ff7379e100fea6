// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/Clock.h"

#include <QString>

#include <cstdint>
#include <optional>

/// A banner's texts, symbol and colour: pure functions of the action and the moment, for the banner's view.
///
/// "The action's lesson" is `lesson`, or `nextLesson` if there is none. Names in the texts are untrusted and
/// may contain anything; show the texts as plain text.
namespace corvane::bannerContent {

/// An opaque sRGB colour; each component from 0 to 1.
struct AccentColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const AccentColor &, const AccentColor &) = default;
};

/// The name of the symbol on the left of the card, for example "bell.fill".
[[nodiscard]] QString symbolName(const TeachingAction &action);

/// The colour behind the symbol.
[[nodiscard]] AccentColor accentColor(const TeachingAction &action);

/// Whole seconds from `currentDate` to the start of the action's lesson, rounded up; negative once it has
/// started, 0 if the action has no lesson.
[[nodiscard]] std::int64_t secondsUntilLessonStart(const TeachingAction &action, Date currentDate);

/// The first line, in capitals. Changes with `currentDate` only in the join phase.
[[nodiscard]] QString title(const TeachingAction &action, Date currentDate);

/// The first line of the join phase, `secondsUntilStart` before the start of `lesson`.
[[nodiscard]] QString joinTitle(const std::optional<Lesson> &lesson, std::int64_t secondsUntilStart);

/// The second line: the student.
[[nodiscard]] QString studentLine(const TeachingAction &action);

/// The third line. Changes with `currentDate` only in the join phase.
[[nodiscard]] QString informationLine(const TeachingAction &action, Date currentDate);

/// A duration in words: whole seconds below a minute and a half, else minutes. A negative duration is "0
/// seconds".
[[nodiscard]] QString formattedDuration(Seconds duration);

} // namespace corvane::bannerContent
