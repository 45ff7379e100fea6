// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonParser.h"

#include <QHash>
#include <QStringList>
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

/// In the order in which they are tried: LingoAce first, since its notes often carry a Zoom link as well.
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

/// Booking platforms put this class platform's name and a running number around the student's name.
constexpr QStringView tuokeyun = u"拓课云";

constexpr QStringView separators = u"-–—|•:()[]【】";

bool containsBlocker(const QString &loweredText)
{
    return std::ranges::any_of(personalBlockers,
                               [&](QStringView word) { return loweredText.contains(word); });
}

/// Whether `text` has at most `limit` characters as a person counts them; long texts are not counted to the
/// end.
bool hasAtMostCharacters(const QString &text, int limit)
{
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (count <= limit && boundaries.toNextBoundary() != -1) {
        ++count;
    }
    return count <= limit;
}

/// Removes each upper-case code of two to four letters in parentheses, as in "Anna (ABC)", with the white
/// space before it.
QString withoutCodes(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        if (text[i] == u'(') {
            qsizetype end = i + 1;
            while (end < text.size() && end - i <= 5 && text[end] >= u'A' && text[end] <= u'Z') {
                ++end;
            }
            const qsizetype letters = end - i - 1;
            if (letters >= 2 && letters <= 4 && end < text.size() && text[end] == u')') {
                while (!result.isEmpty() && result.back().isSpace()) {
                    result.chop(1);
                }
                i = end + 1;
                continue;
            }
        }
        result.append(text[i]);
        ++i;
    }
    return result;
}

bool isMark(char32_t scalar)
{
    switch (QChar::category(scalar)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
        return true;
    default:
        return false;
    }
}

/// Where a unit of a folded text came from.
struct FoldedUnit {
    qsizetype source = 0; ///< index in the original of the character it was folded from
    qsizetype next = 0;   ///< index in the original behind that character and the marks on it
    bool isFirst = true;  ///< whether it is the first that its character folds to
};

/// A text without letter case and diacritics.
struct FoldedText {
    QString text;
    std::vector<FoldedUnit> units;
};

/// What one character, of one or two UTF-16 units, folds to; nothing when it is a mark.
QString foldedCharacter(QStringView character)
{
    QString units;
    for (const QChar unit : character.toString().normalized(QString::NormalizationForm_D)) {
        if (!isMark(unit.unicode())) {
            units.append(unit);
        }
    }
    return units.toCaseFolded();
}

FoldedText folded(const QString &original)
{
    FoldedText result;
    result.text.reserve(original.size());
    result.units.reserve(static_cast<std::size_t>(original.size()));
    for (qsizetype i = 0; i < original.size();) {
        if (original[i].unicode() < 0x80) {
            // Most titles hold little else, and are folded a dozen times.
            result.text.append(original[i].toLower());
            result.units.push_back({.source = i, .next = i + 1, .isFirst = true});
            ++i;
            continue;
        }
        const bool isPair =
            original[i].isHighSurrogate() && i + 1 < original.size() && original[i + 1].isLowSurrogate();
        const qsizetype length = isPair ? 2 : 1;
        const QString units = foldedCharacter(QStringView(original).mid(i, length));
        for (qsizetype k = 0; k < units.size(); ++k) {
            result.units.push_back({.source = i, .next = i + length, .isFirst = k == 0});
        }
        result.text.append(units);
        if (units.isEmpty() && !result.units.empty()) {
            // A mark that folds away belongs to the character before it, and goes where that goes.
            const qsizetype bearer = result.units.back().source;
            for (auto k = result.units.size(); k > 0 && result.units[k - 1].source == bearer; --k) {
                result.units[k - 1].next = i + length;
            }
        }
        i += length;
    }
    return result;
}

/// Removes every occurrence of `word`, ignoring case and diacritics. Only whole characters are removed: one
/// that folds to several units, like "ß", is never cut in two.
QString without(const QString &text, const QString &word)
{
    const FoldedText haystack = folded(text);
    const QString needle = folded(word).text;
    QString result;
    qsizetype kept = 0;
    qsizetype from = 0;
    for (;;) {
        const qsizetype at = haystack.text.indexOf(needle, from);
        if (at < 0) {
            break;
        }
        const auto begin = static_cast<std::size_t>(at);
        const auto end = begin + static_cast<std::size_t>(needle.size());
        if (!haystack.units[begin].isFirst || (end < haystack.units.size() && !haystack.units[end].isFirst)) {
            from = at + 1;
            continue;
        }
        result.append(QStringView(text).mid(kept, haystack.units[begin].source - kept));
        kept = haystack.units[end - 1].next;
        from = static_cast<qsizetype>(end);
    }
    result.append(QStringView(text).mid(kept));
    return result;
}

QString withoutTrailingNumber(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1].isSpace()) {
        --end;
    }
    qsizetype digits = end;
    while (digits > 0 && text[digits - 1].category() == QChar::Number_DecimalDigit) {
        --digits;
    }
    if (digits == end) {
        return text;
    }
    while (digits > 0 && text[digits - 1].isSpace()) {
        --digits;
    }
    return text.left(digits);
}

/// The words between separators and white space, joined with single spaces.
QString words(const QString &text)
{
    QString result;
    result.reserve(text.size());
    bool betweenWords = true;
    for (const QChar character : text) {
        if (character.isSpace() || separators.contains(character)) {
            betweenWords = true;
            continue;
        }
        if (betweenWords && !result.isEmpty()) {
            result.append(u' ');
        }
        betweenWords = false;
        result.append(character);
    }
    return result;
}

/// Booked hours and half hours are lessons of 50 and 25 minutes; a minute more or less is a booking's slack.
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

/// Whether an event of this title may be a lesson although it names no platform.
bool isNameOnlyTitle(const QString &untrimmed)
{
    const QString title = untrimmed.trimmed();
    return !title.isEmpty() && hasAtMostCharacters(title, 48) &&
           !CalendarLessonParser::hasPersonalBlocker(title) && !title.toLower().contains(u"meeting"_s) &&
           CalendarLessonParser::looksLikeNameOnlyLesson(title);
}

/// Whether an event of this length may be a lesson although it names no platform: 10 to 90 minutes.
bool isNameOnlyLength(Seconds length)
{
    return length >= Seconds{600} && length <= Seconds{5400};
}

bool haveSameTexts(const CalendarLessonEvent &left, const CalendarLessonEvent &right)
{
    return left.title == right.title && left.location == right.location && left.notes == right.notes &&
           left.url == right.url;
}

/// What the texts of an event say, whenever it takes place.
struct Reading {
    const CalendarLessonEvent *event = nullptr; ///< the one that was read
    bool isPersonal = false;
    bool namesPlatform = false;
    bool isNameOnly = false; ///< may be a lesson for its title alone
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    QString studentName; ///< of what may be a lesson
};

Reading readingOf(const CalendarLessonEvent &event)
{
    Reading reading{.event = &event,
                    .isPersonal = CalendarLessonParser::hasPersonalBlocker(event.title),
                    .namesPlatform = false,
                    .isNameOnly = false,
                    .platform = TeachingPlatform::onlineLesson,
                    .studentName = {}};
    if (reading.isPersonal) {
        return reading;
    }
    if (const auto platform = CalendarLessonParser::platform(event)) {
        reading.namesPlatform = true;
        reading.platform = *platform;
    } else {
        reading.isNameOnly = isNameOnlyTitle(event.title);
    }
    if (reading.namesPlatform || reading.isNameOnly) {
        reading.studentName = CalendarLessonParser::studentName(event.title, reading.platform);
    }
    return reading;
}

} // namespace

CalendarLessonParser::CalendarLessonParser(std::map<TeachingPlatform, PlatformProfile> platformProfiles)
    : m_platformProfiles(std::move(platformProfiles))
{
}

std::vector<Lesson> CalendarLessonParser::lessons(const std::vector<CalendarLessonEvent> &events) const
{
    std::vector<Lesson> result;
    // The occurrences of one event share its texts, which are read once: they may be long.
    QHash<QString, Reading> readings;
    for (const CalendarLessonEvent &event : events) {
        const Seconds length = event.endDate - event.startDate;
        if (!(event.endDate > event.startDate)) {
            continue;
        }
        auto reading = readings.find(event.title);
        if (reading == readings.end() || !haveSameTexts(*reading->event, event)) {
            reading = readings.insert(event.title, readingOf(event));
        }
        if (reading->isPersonal ||
            !(reading->namesPlatform || (reading->isNameOnly && isNameOnlyLength(length)))) {
            continue;
        }
        const auto profile = m_platformProfiles.find(reading->platform);
        if (profile == m_platformProfiles.end()) {
            continue;
        }
        result.push_back({.id = QUuid::createUuid(),
                          .studentName = reading->studentName,
                          .platform = reading->platform,
                          .startTime = event.startDate,
                          .duration = snapped(length),
                          .profile = profile->second});
    }
    std::ranges::stable_sort(result, {}, &Lesson::startTime);
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
    const bool numbered = title.contains(tuokeyun);
    QString text = withoutCodes(title);
    const QStringList removed{rawValue(platform), u"Online Lesson"_s,   u"LingoAce"_s,
                              u"Lingo Ace"_s,     u"Microsoft Teams"_s, u"MS Teams"_s,
                              u"Google Meet"_s,   tuokeyun.toString(),  u"Zoom"_s,
                              u"Lesson"_s,        u"Class"_s,           u"ESL"_s};
    for (const QString &word : removed) {
        text = without(text, word);
    }
    if (numbered) {
        text = withoutTrailingNumber(text);
    }
    QString name = words(text);
    if (name.isEmpty()) {
        name = text.trimmed();
    }
    return name.isEmpty() ? u"Student"_s : name;
}

bool CalendarLessonParser::hasPersonalBlocker(const QString &text)
{
    return containsBlocker(text.toLower());
}

bool CalendarLessonParser::looksLikeNameOnlyLesson(const QString &trimmedTitle)
{
    const auto scalars = trimmedTitle.toUcs4();
    return std::ranges::all_of(scalars, [](char32_t scalar) { return isAllowedNameCharacter(scalar); });
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
