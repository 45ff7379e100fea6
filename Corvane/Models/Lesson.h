// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/PlatformProfile.h"
#include "Corvane/Models/TeachingPlatform.h"
#include "Corvane/Utilities/Clock.h"

#include <QString>
#include <QUuid>

namespace corvane {

/// One teaching appointment of today. It occupies the half-open interval from `startTime` to endTime().
struct Lesson {
    QUuid id;
    QString studentName; ///< as shown to the teacher; any text, never markup
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    Seconds duration{};
    PlatformProfile profile;

    friend bool operator==(const Lesson &, const Lesson &) = default;

    [[nodiscard]] Date endTime() const { return startTime + duration; }

    /// Whether the lesson is in progress at `date`: the start is included, the end is not.
    [[nodiscard]] bool isInProgress(Date date) const { return startTime <= date && date < endTime(); }

    /// Whether the lesson starts strictly after `date`.
    [[nodiscard]] bool isUpcoming(Date date) const { return startTime > date; }
};

/// Orders lessons by start, then student name, then the platform's raw value, so that a stable sort gives the
/// same result after every reload.
[[nodiscard]] bool precedes(const Lesson &left, const Lesson &right);

} // namespace corvane
