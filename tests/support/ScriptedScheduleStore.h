// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// A schedule whose answer a test sets: lessons or an error, at once or after a delay on the clock.
class ScriptedScheduleStore final : public LessonScheduleProviding {
public:
    LessonScheduleResult answer;
    Seconds delay{};
    int calls = 0;

    QCoro::Task<LessonScheduleResult> lessonsForToday() override
    {
        ++calls;
        // The answer is that of the moment of the call, as with a query that is under way.
        LessonScheduleResult asked = answer;
        if (delay > Seconds::zero()) {
            co_await wait(delay);
        }
        co_return asked;
    }
};

} // namespace corvane
