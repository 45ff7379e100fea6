// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/ManualLessonForm.h"

#include "Corvane/Utilities/DateText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace corvane {

ManualLessonForm ManualLessonForm::at(Date now)
{
    return {.studentName = {},
            .platform = allTeachingPlatforms.front(),
            .startTime = now + Seconds{1800},
            .durationMinutes = 30};
}

std::optional<ManualLessonEntry> ManualLessonForm::makeEntry(const QUuid &id) const
{
    const QString name = studentName.trimmed();
    if (name.isEmpty()) {
        return std::nullopt;
    }
    return ManualLessonEntry{.id = id,
                             .studentName = name,
                             .platform = platform,
                             .startTime = chosenStart(toDateTime(startTime).toLocalTime()),
                             .durationMinutes = durationMinutes};
}

QString lengthText(qint64 minutes)
{
    return u"%1 min"_s.arg(minutes);
}

QString symbolName(TeachingPlatform platform)
{
    switch (platform) {
    case TeachingPlatform::onlineLesson:
        return u"person.crop.rectangle.stack.fill"_s;
    case TeachingPlatform::lingoAce:
        return u"globe.asia.australia.fill"_s;
    case TeachingPlatform::microsoftTeams:
        return u"person.2.wave.2.fill"_s;
    case TeachingPlatform::zoom:
        return u"video.fill"_s;
    case TeachingPlatform::googleMeet:
        return u"bubble.left.and.bubble.right.fill"_s;
    }
    Q_UNREACHABLE();
}

QString startFormat(const QLocale &locale)
{
    QString date = locale.dateFormat(QLocale::ShortFormat);
    // A typed two-digit year would be ambiguous.
    static const QRegularExpression shortYear(u"(?<!y)yy(?!y)"_s);
    date.replace(shortYear, u"yyyy"_s);
    QString time = shortTimeFormat(locale);
    // Omits seconds, time zones and day periods; the toolkit writes a day period as its format letter.
    static const QRegularExpression omitted(u"\\W?\\bss?\\b|\\s*\\bt+\\b|\\s*B+"_s);
    time.remove(omitted);
    return date + u' ' + time;
}

QString startText(Date start, const QLocale &locale)
{
    return locale.toString(toDateTime(start).toLocalTime(), u"ddd "_s + startFormat(locale));
}

Date chosenStart(const QDateTime &shown)
{
    const QTime time = shown.time();
    // Subtracted, not set: in the hour that a clock change repeats, setting the time would select the first
    // pass.
    return fromDateTime(shown.addMSecs(-(time.second() * 1000 + time.msec())));
}

} // namespace corvane
