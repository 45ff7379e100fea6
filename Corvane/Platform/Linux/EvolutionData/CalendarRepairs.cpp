// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarRepairs.h"

#include "Corvane/Platform/Linux/EvolutionData/ExpansionBudget.h"

#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cctype>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// A longer line is split into one line per date. In bytes.
constexpr qsizetype longestList = 60'000;
/// Longer rules and longer times are not repaired. In bytes.
constexpr qsizetype longestRule = 4'000;
constexpr qsizetype longestTime = 40;
/// Further dates of a line are ignored: these are already more than an event may have.
constexpr auto mostDates = static_cast<std::size_t>(ExpansionBudget().datesOfEvent) + 1;

bool isDigits(QByteArrayView text)
{
    return std::ranges::all_of(text, [](char character) { return character >= '0' && character <= '9'; });
}

/// "20250514", "20250514T120000" or "20250514T120000Z".
bool isPlainTime(QByteArrayView value)
{
    const bool isUtc = value.endsWith('Z');
    if (value.size() == 8) {
        return isDigits(value);
    }
    return value.size() == (isUtc ? 16 : 15) && isDigits(value.first(8)) && value[8] == 'T' &&
           isDigits(value.sliced(9, 6));
}

/// The values of a list without repetitions.
QByteArray withoutRepetitions(const QByteArray &list)
{
    QList<QByteArray> values;
    for (const QByteArray &value : list.split(',')) {
        if (const QByteArray trimmed = value.trimmed(); !trimmed.isEmpty() && !values.contains(trimmed)) {
            values << trimmed;
        }
    }
    return values.join(',');
}

/// The line's name and parameters without the time zone: a time in UTC has none.
QByteArray withoutZone(QByteArrayView nameAndParameters)
{
    const QList<QByteArray> parts = nameAndParameters.toByteArray().split(';');
    QList<QByteArray> kept;
    std::ranges::copy_if(parts, std::back_inserter(kept),
                         [](const QByteArray &part) { return !part.toUpper().startsWith("TZID="); });
    return kept.join(';');
}

bool isListOfTimes(const QByteArray &name)
{
    return name == "EXDATE" || name == "RDATE";
}

bool isTime(const QByteArray &name)
{
    return name == "DTSTART" || name == "DTEND" || name == "RECURRENCE-ID" || name == "DTSTAMP";
}

std::vector<QByteArray> repairedTimes(const QByteArray &line, qsizetype separator, bool isList)
{
    std::vector<QByteArray> lines;
    bool isPlain = line.size() < longestList;
    for (qsizetype from = separator + 1; from <= line.size() && lines.size() < mostDates;) {
        const qsizetype comma = isList ? line.indexOf(',', from) : -1;
        const qsizetype end = comma < 0 ? line.size() : comma;
        const QByteArray value = line.sliced(from, end - from);
        const QByteArray repaired = repairedTime(value);
        QByteArray begin = line.first(separator);
        if (repaired.endsWith('Z') && !value.trimmed().endsWith('Z')) {
            begin = withoutZone(begin);
        }
        isPlain = isPlain && repaired == value;
        lines.push_back(begin + ':' + repaired);
        from = end + 1;
    }
    return isPlain ? std::vector{line} : lines;
}

} // namespace

QByteArray repairedRule(const QByteArray &value)
{
    if (value.size() > longestRule) {
        return value;
    }
    QList<QByteArray> parts;
    for (const QByteArray &part : value.split(';')) {
        const qsizetype equals = part.indexOf('=');
        const QByteArray name = part.left(equals).trimmed().toUpper();
        QByteArray numbers =
            equals < 0 ? QByteArray() : withoutRepetitions(part.sliced(equals + 1)).toUpper();
        if (numbers.isEmpty() || name.startsWith("X-")) {
            continue;
        }
        if (name == "UNTIL") {
            numbers = repairedTime(numbers);
        }
        parts << name + '=' + numbers;
    }
    return parts.join(';');
}

QByteArray repairedTime(const QByteArray &value)
{
    QByteArray trimmed = value.trimmed();
    if (trimmed.size() > longestTime || isPlainTime(trimmed)) {
        return trimmed;
    }
    static const QRegularExpression form(
        uR"(^(\d{4})-?(\d\d)-?(\d\d)[Tt ](\d\d):?(\d\d)(?::?(\d\d)(?:\.\d+)?)?\s*([Zz]|([+-])(\d\d):?(\d\d))?$)"_s);
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(trimmed));
    if (!match.hasMatch()) {
        return trimmed;
    }
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    const QDate date(number(1), number(2), number(3));
    const QTime clock(number(4), number(5), number(6));
    if (!date.isValid() || !clock.isValid()) {
        return trimmed;
    }
    const QDateTime time(date, clock, QTimeZone::utc());
    const int offset = (number(9) * 60 + number(10)) * (match.captured(8) == u"-" ? -60 : 60);
    const QString mark = match.captured(7).isEmpty() ? QString() : u"Z"_s;
    return (time.addSecs(-offset).toString(u"yyyyMMdd'T'HHmmss"_s) + mark).toLatin1();
}

std::vector<QByteArray> repairedLines(const QByteArray &line)
{
    const QByteArray name = propertyName(line);
    const qsizetype separator = valueSeparator(line);
    if (separator < 0) {
        return {line};
    }
    if (name == "RRULE" || name == "EXRULE") {
        return {
            name + ':' +
            (line.size() > longestRule ? QByteArray("too long") : repairedRule(line.sliced(separator + 1)))};
    }
    if (isTime(name) || isListOfTimes(name)) {
        return repairedTimes(line, separator, isListOfTimes(name));
    }
    return {line};
}

qsizetype valueSeparator(QByteArrayView line)
{
    bool isQuoted = false;
    for (qsizetype index = 0; index < line.size(); ++index) {
        if (line[index] == '"') {
            isQuoted = !isQuoted;
        } else if (line[index] == ':' && !isQuoted) {
            return index;
        }
    }
    return -1;
}

QByteArray propertyName(QByteArrayView line)
{
    const auto end =
        std::ranges::find_if(line, [](char character) { return character == ';' || character == ':'; });
    return line.first(end - line.begin()).toByteArray().trimmed().toUpper();
}

bool tellsTime(const QByteArray &name)
{
    return std::ranges::any_of(
        std::array{"RRULE", "EXRULE", "RDATE", "EXDATE", "DTSTART", "DTEND", "DURATION", "RECURRENCE-ID"},
        [&name](const char *other) { return name == other; });
}

} // namespace corvane
