// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonParser.h"

#include "Corvane/Calendar/StudentName.h"

#include <QHash>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

struct Keyword {
    QStringView text;
    TeachingPlatform platform;
};

/// Tried in this order: LingoAce first, because its notes often contain a Zoom link as well.
constexpr std::array keywords{
    Keyword{u"lingoace", TeachingPlatform::lingoAce},
    Keyword{u"lingo ace", TeachingPlatform::lingoAce},
    Keyword{u"teams.microsoft.com", TeachingPlatform::microsoftTeams},
    Keyword{u"microsoft teams", TeachingPlatform::microsoftTeams},
    Keyword{u"ms teams", TeachingPlatform::microsoftTeams},
    Keyword{u"zoom.us", TeachingPlatform::zoom},
    Keyword{u"zoom.com", TeachingPlatform::zoom},
    Keyword{u"zoom", TeachingPlatform::zoom},
    Keyword{u"meet.google.com", TeachingPlatform::googleMeet},
    Keyword{u"google meet", TeachingPlatform::googleMeet},
};

constexpr std::array<QStringView, 9> personalBlockers{
    u"appointment", u"break", u"dentist", u"doctor", u"gym", u"lunch", u"personal", u"reminder", u"travel"};

/// A title that contains this word is not a bare name.
constexpr QStringView meeting = u"meeting";

/// The word in `text` that marks its event as personal; empty if there is none.
QString personalWord(const QString &text)
{
    const QString lowered = text.toLower();
    const auto *const word = std::ranges::find_if(
        personalBlockers, [&](QStringView candidate) { return lowered.contains(candidate); });
    return word != personalBlockers.end() ? word->toString() : QString();
}

/// Whether `text` has at most `limit` user-perceived characters (grapheme clusters); counting stops at the
/// limit.
bool hasAtMostCharacters(const QString &text, int limit)
{
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (count <= limit && boundaries.toNextBoundary() != -1) {
        ++count;
    }
    return count <= limit;
}

/// Booked hours and half hours are lessons of 50 and 25 minutes; bookings may be off by a minute.
Seconds snapped(Seconds booked)
{
    if (std::abs(booked.count() - 3600) <= 60) {
        return Seconds{3000};
    }
    if (std::abs(booked.count() - 1800) <= 60) {
        return Seconds{1500};
    }
    return booked;
}

/// The first character of `title` that cannot be part of a name; empty if there is none.
QString unfitCharacter(const QString &title)
{
    const auto scalars = title.toUcs4();
    for (const char32_t scalar : scalars) {
        if (!CalendarLessonParser::isAllowedNameCharacter(scalar)) {
            return QStringView(QChar::fromUcs4(scalar)).toString();
        }
    }
    return {};
}

/// Why an event with this title and no named platform is not a lesson; nothing if it may be one.
std::optional<NotALesson> obstacleInTitle(const QString &untrimmed)
{
    const QString title = untrimmed.trimmed();
    if (title.isEmpty()) {
        return NotALesson{.reason = NoLessonReason::untitled, .word = {}};
    }
    if (!hasAtMostCharacters(title, 48)) {
        return NotALesson{.reason = NoLessonReason::longTitle, .word = {}};
    }
    if (title.toLower().contains(meeting)) {
        return NotALesson{.reason = NoLessonReason::meeting, .word = meeting.toString()};
    }
    if (!CalendarLessonParser::looksLikeNameOnlyLesson(title)) {
        return NotALesson{.reason = NoLessonReason::unfitCharacter, .word = unfitCharacter(title)};
    }
    return std::nullopt;
}

/// Why an event of this length and no named platform is not a lesson; nothing if it may be one.
std::optional<NotALesson> obstacleInLength(Seconds length)
{
    if (length < Seconds{600}) {
        return NotALesson{.reason = NoLessonReason::tooShort, .word = {}};
    }
    if (length > Seconds{5400}) {
        return NotALesson{.reason = NoLessonReason::tooLong, .word = {}};
    }
    return std::nullopt;
}

bool haveSameTexts(const CalendarLessonEvent &left, const CalendarLessonEvent &right)
{
    return left.title == right.title && left.location == right.location && left.notes == right.notes &&
           left.url == right.url;
}

/// What an event's texts say, regardless of its times.
struct Reading {
    const CalendarLessonEvent *event = nullptr; ///< the event that was read
    std::optional<NotALesson> obstacle;         ///< why it is not a lesson, regardless of its times
    bool namesPlatform = false;
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    QString studentName; ///< empty if there is an obstacle
};

Reading readingOf(const CalendarLessonEvent &event)
{
    Reading reading{.event = &event,
                    .obstacle = std::nullopt,
                    .namesPlatform = false,
                    .platform = TeachingPlatform::onlineLesson,
                    .studentName = {}};
    if (CalendarLessonParser::hasPersonalBlocker(event.title)) {
        reading.obstacle = {.reason = NoLessonReason::personalWord, .word = personalWord(event.title)};
        return reading;
    }
    if (const auto platform = CalendarLessonParser::platform(event)) {
        reading.namesPlatform = true;
        reading.platform = *platform;
    } else {
        reading.obstacle = obstacleInTitle(event.title);
    }
    if (!reading.obstacle) {
        reading.studentName = CalendarLessonParser::studentName(event.title, reading.platform);
    }
    return reading;
}

/// Judges the events of one call. Keeps pointers to them, so they must outlive it.
class Judge {
public:
    explicit Judge(const std::map<TeachingPlatform, PlatformProfile> &profiles) : m_profiles(profiles) {}

    LessonVerdict verdict(const CalendarLessonEvent &event)
    {
        if (!(event.endDate > event.startDate)) {
            return std::unexpected(NotALesson{.reason = NoLessonReason::noLength, .word = {}});
        }
        const Reading &reading = read(event);
        if (reading.obstacle) {
            return std::unexpected(*reading.obstacle);
        }
        const Seconds length = event.endDate - event.startDate;
        if (!reading.namesPlatform) {
            if (const auto obstacle = obstacleInLength(length)) {
                return std::unexpected(*obstacle);
            }
        }
        const auto profile = m_profiles.find(reading.platform);
        if (profile == m_profiles.end()) {
            return std::unexpected(
                NotALesson{.reason = NoLessonReason::noProfile, .word = rawValue(reading.platform)});
        }
        return Lesson{.id = QUuid::createUuid(),
                      .studentName = reading.studentName,
                      .platform = reading.platform,
                      .startTime = event.startDate,
                      .duration = snapped(length),
                      .profile = profile->second};
    }

private:
    /// Occurrences of one event share its texts, which may be long and are read only once.
    const Reading &read(const CalendarLessonEvent &event)
    {
        auto reading = m_readings.find(event.title);
        if (reading == m_readings.end() || !haveSameTexts(*reading->event, event)) {
            reading = m_readings.insert(event.title, readingOf(event));
        }
        return *reading;
    }

    const std::map<TeachingPlatform, PlatformProfile> &m_profiles;
    QHash<QString, Reading> m_readings;
};

} // namespace

CalendarLessonParser::CalendarLessonParser(std::map<TeachingPlatform, PlatformProfile> platformProfiles)
    : m_platformProfiles(std::move(platformProfiles))
{
}

std::vector<Lesson> CalendarLessonParser::lessons(const std::vector<CalendarLessonEvent> &events) const
{
    std::vector<Lesson> result;
    Judge judge(m_platformProfiles);
    for (const CalendarLessonEvent &event : events) {
        if (LessonVerdict verdict = judge.verdict(event)) {
            result.push_back(*std::move(verdict));
        }
    }
    std::ranges::stable_sort(result, {}, &Lesson::startTime);
    return result;
}

std::vector<LessonVerdict>
CalendarLessonParser::verdicts(const std::vector<CalendarLessonEvent> &events) const
{
    std::vector<LessonVerdict> result;
    result.reserve(events.size());
    Judge judge(m_platformProfiles);
    for (const CalendarLessonEvent &event : events) {
        result.push_back(judge.verdict(event));
    }
    return result;
}

std::optional<TeachingPlatform> CalendarLessonParser::platform(const CalendarLessonEvent &event)
{
    QString text = event.title;
    if (event.location) {
        text += u' ' + *event.location;
    }
    if (event.notes) {
        text += u' ' + *event.notes;
    }
    if (event.url) {
        text += u' ' + event.url->toString(QUrl::FullyEncoded);
    }
    text = text.toLower();
    const auto *const hit =
        std::ranges::find_if(keywords, [&](const Keyword &keyword) { return text.contains(keyword.text); });
    return hit != keywords.end() ? std::optional(hit->platform) : std::nullopt;
}

QString CalendarLessonParser::studentName(const QString &title, TeachingPlatform platform)
{
    return corvane::studentName(title, platform);
}

bool CalendarLessonParser::hasPersonalBlocker(const QString &text)
{
    return !personalWord(text).isEmpty();
}

bool CalendarLessonParser::looksLikeNameOnlyLesson(const QString &trimmedTitle)
{
    return unfitCharacter(trimmedTitle).isEmpty();
}

bool CalendarLessonParser::isAllowedNameCharacter(char32_t scalar)
{
    constexpr std::u32string_view allowed = U"-'()[]【】";
    return QChar::isLetter(scalar) || isMark(scalar) || QChar::isDigit(scalar) || scalar == U'\t' ||
           QChar::category(scalar) == QChar::Separator_Space || allowed.contains(scalar) ||
           isCJKUnifiedIdeograph(scalar);
}

bool CalendarLessonParser::isCJKUnifiedIdeograph(char32_t scalar)
{
    using Range = std::pair<char32_t, char32_t>;
    constexpr std::array ranges{Range{0x3400, 0x4DBF},   Range{0x4E00, 0x9FFF},   Range{0xF900, 0xFAFF},
                                Range{0x20000, 0x2A6DF}, Range{0x2A700, 0x2EBEF}, Range{0x30000, 0x3134F}};
    return std::ranges::any_of(
        ranges, [scalar](Range range) { return scalar >= range.first && scalar <= range.second; });
}

} // namespace corvane
