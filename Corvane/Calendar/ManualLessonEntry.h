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

/// A lesson that the teacher entered by hand. The form enforces the limits, not this record.
struct ManualLessonEntry {
    QUuid id; ///< the lesson's identifier, so that it survives every reload
    QString studentName;
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    qint64 durationMinutes = 0;

    friend bool operator==(const ManualLessonEntry &, const ManualLessonEntry &) = default;

    /// The lesson for this entry, with its platform's profile from `profiles`, or else that of
    /// `onlineLesson`. The length is taken as entered. A length in seconds that overflows, or a table with
    /// neither profile, is a programming error and aborts the process.
    [[nodiscard]] Lesson makeLesson(
        const std::map<TeachingPlatform, PlatformProfile> &profiles = PlatformProfile::defaults()) const;
};

/// The stored form: a JSON array with one object per entry. Fails if an entry's start is not a finite number.
[[nodiscard]] std::expected<QByteArray, Failure> encode(const std::vector<ManualLessonEntry> &entries);

/// Decodes the stored form. One incomplete entry rejects the whole list.
[[nodiscard]] std::expected<std::vector<ManualLessonEntry>, Failure>
decodeManualLessons(const QByteArray &data);

} // namespace corvane
