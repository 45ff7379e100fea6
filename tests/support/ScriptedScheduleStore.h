// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// A schedule store whose answer a test sets: lessons or an error, at once or after `delay` on the clock.
class ScriptedScheduleStore final : public LessonScheduleProviding {
public:
    LessonScheduleResult answer;
    Seconds delay{};
    int calls = 0;

    QCoro::Task<LessonScheduleResult> lessonsForToday() override
    {
        ++calls;
        // Later changes of `answer` do not affect a call in progress, as with a real query.
        LessonScheduleResult asked = answer;
        if (delay > Seconds::zero()) {
            co_await wait(delay);
        }
        co_return asked;
    }
};

} // namespace corvane
