// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/PlatformProfile.h"
#include "Corvane/Models/TeachingPlatform.h"
#include "Corvane/Utilities/Clock.h"

#include <QString>
#include <QUuid>

namespace corvane {

/// One teaching appointment of today. It takes the half-open time from `startTime` to its end.
struct Lesson {
    QUuid id;
    QString studentName; ///< as shown to the teacher; any text, never markup
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    Seconds duration{};
    PlatformProfile profile;

    friend bool operator==(const Lesson &, const Lesson &) = default;

    /// `startTime` plus `duration`.
    [[nodiscard]] Date endTime() const { return startTime + duration; }

    /// Whether the lesson is held at `date`: the start belongs to it, the end does not.
    [[nodiscard]] bool isInProgress(Date date) const { return startTime <= date && date < endTime(); }

    /// Whether the lesson starts strictly after `date`.
    [[nodiscard]] bool isUpcoming(Date date) const { return startTime > date; }
};

/// The order in which lessons that start together are taken: by start, then student name, then the platform's
/// raw value. A stable sort by it gives the same answer after every reload.
[[nodiscard]] bool precedes(const Lesson &left, const Lesson &right);

} // namespace corvane
