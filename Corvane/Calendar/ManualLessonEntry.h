// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Utilities/Failure.h"

#include <QByteArray>

#include <expected>
#include <map>
#include <vector>

namespace corvane {

/// A lesson that the teacher entered by hand. The record enforces no limits; the form that makes it does.
struct ManualLessonEntry {
    QUuid id; ///< becomes the lesson's identifier, so that it stays the same at every reload
    QString studentName;
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    qint64 durationMinutes = 0;

    friend bool operator==(const ManualLessonEntry &, const ManualLessonEntry &) = default;

    /// The lesson of this entry, with the platform's profile of `profiles`, or else that of `onlineLesson`.
    /// Its length is taken as entered. A length that overflows when counted in seconds, or a table without
    /// either profile, ends the process: both are programming errors.
    [[nodiscard]] Lesson makeLesson(
        const std::map<TeachingPlatform, PlatformProfile> &profiles = PlatformProfile::defaults()) const;
};

/// The stored form of the list: a JSON array of one object per entry. Fails where an entry's start is not a
/// finite number.
[[nodiscard]] std::expected<QByteArray, Failure> encode(const std::vector<ManualLessonEntry> &entries);

/// The list of a stored form. One entry that is not whole rejects the list.
[[nodiscard]] std::expected<std::vector<ManualLessonEntry>, Failure>
decodeManualLessons(const QByteArray &data);

} // namespace corvane
