// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/LessonState.h"
#include "Corvane/Utilities/Clock.h"

#include <QString>

#include <optional>

namespace corvane {

/// The application's state at one moment; the view model keeps it current for diagnostics.
struct DebugSnapshot {
    Date currentTime;
    std::optional<QString> currentLessonDescription; ///< for example "Anna (Zoom)"
    std::optional<QString> nextLessonDescription;
    QString countdownDescription; ///< to the next transition, for example "3m 5s", or "None"
    LessonState engineState = LessonState::scheduled;
    std::optional<double> secondsUntilNextEvent; ///< never negative
    std::optional<QString> lastNotificationDescription;
    std::optional<QString> nextNotificationDescription;
    qsizetype loadedLessonCount = 0;
    std::optional<QString> lastCalendarReloadDescription;
    QString logPath;

    friend bool operator==(const DebugSnapshot &, const DebugSnapshot &) = default;
};

} // namespace corvane
