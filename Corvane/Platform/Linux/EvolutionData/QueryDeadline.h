// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>

namespace corvane {

/// When the calendars must have answered, so that their answers can still be put together before `deadline`.
[[nodiscard]] inline QDeadlineTimer answerDeadline(QDeadlineTimer deadline)
{
    using namespace std::chrono_literals;
    constexpr auto conclusionTime = 300ms;
    return {std::max(deadline.remainingTimeAsDuration() - conclusionTime, std::chrono::nanoseconds(50ms)),
            Qt::PreciseTimer};
}

} // namespace corvane
