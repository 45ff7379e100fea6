// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/ManualLessonEntry.h"

#include <QDateTime>
#include <QLocale>

#include <array>
#include <optional>

namespace corvane {

/// The current input for a lesson that is in no calendar.
struct ManualLessonForm {
    QString studentName; ///< as typed
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    qint64 durationMinutes = 30;

    /// The initial form of a window created at `now`: no name, and a start in half an hour, to the second.
    [[nodiscard]] static ManualLessonForm at(Date now);

    /// The entered lesson, with white space and line breaks trimmed from the name, and with the start as
    /// shown, without seconds; none if the name is empty.
    [[nodiscard]] std::optional<ManualLessonEntry> makeEntry(const QUuid &id) const;
};

/// The lengths that the form offers, in minutes. Stored lessons may have any other length.
inline constexpr std::array<qint64, 7> manualLessonLengths{15, 20, 25, 30, 40, 45, 60};

/// The displayed length: "45 min".
[[nodiscard]] QString lengthText(qint64 minutes);

/// The symbol of a platform in a list.
[[nodiscard]] QString symbolName(TeachingPlatform platform);

/// The format, as Qt defines it, in which a start is shown and typed: the short date and time of `locale`,
/// with a four-digit year and without seconds.
[[nodiscard]] QString startFormat(const QLocale &locale);

/// A start as shown in a list of lessons, in the machine's time zone: "Sat 21 Nov 2026 10:00".
[[nodiscard]] QString startText(Date start, const QLocale &locale);

/// The start that a teacher means by `shown`, where seconds are not visible: the whole minute.
[[nodiscard]] Date chosenStart(const QDateTime &shown);

} // namespace corvane
