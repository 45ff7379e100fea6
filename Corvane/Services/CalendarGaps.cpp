// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarGaps.h"

#include "Corvane/Utilities/DateText.h"

#include <QStringList>

#include <algorithm>
#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using Condition = CalendarStatus::Condition;

/// Names are untrusted and of any length.
QString quotedName(const CalendarStatus &calendar)
{
    constexpr qsizetype longestName = 40;
    // More than is kept, because simplified() collapses white space.
    QString name = calendar.name.left(10 * longestName).simplified();
    if (name.size() > longestName) {
        const bool wouldCutCharacter = name.at(longestName - 2).isHighSurrogate();
        name = name.left(longestName - (wouldCutCharacter ? 2 : 1)) + u'…';
    }
    return u'“' + name + u'”';
}

/// For example: the calendars “A”, “B” and 3 more.
QString nouns(const std::vector<CalendarStatus> &gaps)
{
    constexpr std::size_t mostNames = 3;
    if (gaps.size() == 1) {
        return u"the calendar "_s + quotedName(gaps.front());
    }
    const std::size_t named = gaps.size() <= mostNames ? gaps.size() - 1 : mostNames - 1;
    QStringList names;
    for (std::size_t i = 0; i < named; ++i) {
        names.append(quotedName(gaps[i]));
    }
    const QString last = gaps.size() <= mostNames ? quotedName(gaps.back())
                                                  : QString::number(gaps.size() - named) + u" more"_s;
    return u"the calendars "_s + names.join(u", "_s) + u" and "_s + last;
}

/// The condition that all gaps share, if any.
std::optional<Condition> commonCondition(const std::vector<CalendarStatus> &gaps)
{
    const Condition first = gaps.front().condition;
    const bool isCommon =
        std::ranges::all_of(gaps, [first](const CalendarStatus &gap) { return gap.condition == first; });
    return isCommon ? std::optional(first) : std::nullopt;
}

QString capitalized(QString text)
{
    text[0] = text.at(0).toUpper();
    return text;
}

QString advice(const std::vector<CalendarStatus> &gaps)
{
    switch (commonCondition(gaps).value_or(Condition::unopened)) {
    case Condition::awaitsPassword:
        return u"Please sign in to the account in your calendar program."_s;
    case Condition::unreadable:
        return u"Please check whether the file is complete, or save it again."_s;
    case Condition::silent:
        return u"Please check your internet connection. Quillet keeps trying."_s;
    case Condition::unopened:
    case Condition::unread:
    case Condition::answers:
    case Condition::leftOut:
        return u"Please check in your calendar program. Quillet keeps trying."_s;
    }
    Q_UNREACHABLE();
}

/// For example: since 09:14. Empty if unknown, or if too long ago for a time of day.
QString sinceText(const std::vector<CalendarStatus> &gaps, Date now, const QLocale &locale)
{
    constexpr Seconds longest{12.0 * 3600};
    std::optional<Date> since;
    for (const CalendarStatus &gap : gaps) {
        if (gap.failingSince) {
            since = std::min(since.value_or(*gap.failingSince), *gap.failingSince);
        }
    }
    return since && now - *since < longest ? u" since "_s + timeOfDayText(*since, locale) : QString();
}

} // namespace

std::vector<CalendarStatus> calendarGaps::among(const std::vector<CalendarStatus> &calendars)
{
    std::vector<CalendarStatus> gaps;
    std::ranges::copy_if(calendars, std::back_inserter(gaps), &CalendarStatus::isGap);
    return gaps;
}

QString calendarGaps::notice(const std::vector<CalendarStatus> &gaps)
{
    if (gaps.empty()) {
        return {};
    }
    const bool isOne = gaps.size() == 1;
    switch (commonCondition(gaps).value_or(Condition::unread)) {
    case Condition::silent:
        return u"No answer from "_s + nouns(gaps);
    case Condition::awaitsPassword:
        return capitalized(nouns(gaps)) + (isOne ? u" waits for a password"_s : u" wait for a password"_s);
    case Condition::unopened:
    case Condition::unreadable:
    case Condition::leftOut:
        return capitalized(nouns(gaps)) + u" cannot be read"_s;
    case Condition::unread:
    case Condition::answers:
        break;
    }
    return u"Lessons are missing from "_s + nouns(gaps);
}

QString calendarGaps::title(const std::vector<CalendarStatus> &gaps)
{
    return gaps.size() == 1 ? u"A calendar is missing"_s
                            : QString::number(gaps.size()) + u" calendars are missing"_s;
}

QString calendarGaps::body(const std::vector<CalendarStatus> &gaps, Date now, const QLocale &locale)
{
    return notice(gaps) + sinceText(gaps, now, locale) + u". Today's schedule may lack lessons. "_s +
           advice(gaps);
}

} // namespace corvane
