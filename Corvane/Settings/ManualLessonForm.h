// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/ManualLessonEntry.h"

#include <QDateTime>
#include <QLocale>

#include <array>
#include <optional>

namespace corvane {

/// What the teacher has entered so far of a lesson that is in no calendar.
struct ManualLessonForm {
    QString studentName; ///< as typed
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Date startTime;
    qint64 durationMinutes = 30;

    /// The form as it stands when a window that shows it is made at `now`: no name, and a start in half an
    /// hour, to the second.
    [[nodiscard]] static ManualLessonForm at(Date now);

    /// The lesson entered, with white space and line breaks taken from both ends of the name, and with the
    /// start that is shown, which has no seconds; none where nothing of the name is left.
    [[nodiscard]] std::optional<ManualLessonEntry> makeEntry(const QUuid &id) const;
};

/// The lengths that the form offers, in minutes. A stored lesson may have any other.
inline constexpr std::array<qint64, 7> manualLessonLengths{15, 20, 25, 30, 40, 45, 60};

/// A length as it is shown: "45 min".
[[nodiscard]] QString lengthText(qint64 minutes);

/// The symbol that stands for a platform in a list.
[[nodiscard]] QString symbolName(TeachingPlatform platform);

/// How a start is written and typed in `locale`, as a format of Qt's: the locale's own short date and time,
/// with the whole year and without seconds.
[[nodiscard]] QString startFormat(const QLocale &locale);

/// A start as a list of lessons shows it, in the time zone of the machine: "Sat 21 Nov 2026 10:00".
[[nodiscard]] QString startText(Date start, const QLocale &locale);

/// The moment that a teacher means who chose `shown` where no seconds are seen: the whole minute.
[[nodiscard]] Date chosenStart(const QDateTime &shown);

} // namespace corvane
