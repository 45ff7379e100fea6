// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarBytes.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarRepairs.h"
#include "Corvane/Platform/Linux/EvolutionData/ComponentFilter.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// A calendar needs three levels; the library parses components recursively.
constexpr int maximumNesting = 16;
/// The library takes quadratic time for unfolded lines. In bytes.
constexpr qsizetype foldedLineLength = 74;

/// The Windows-1252 characters for the bytes 0x80 to 0x9F, which are control characters in Latin-1.
constexpr std::array<char16_t, 32> windowsCharacters{
    u'\u20AC', u'\uFFFD', u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', u'\uFFFD', u'\u017D', u'\uFFFD',
    u'\uFFFD', u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', u'\uFFFD', u'\u017E', u'\u0178'};

/// The length of the UTF-8 sequence at the beginning of `bytes`; 0 if there is none.
qsizetype sequenceLength(QByteArrayView bytes)
{
    const auto byteAt = [bytes](qsizetype index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80) {
        return 1;
    }
    const qsizetype length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length) {
        return 0;
    }
    for (qsizetype index = 1; index < length; ++index) {
        if ((byteAt(index) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const unsigned char second = byteAt(1);
    // Overlong forms, surrogates, and values beyond Unicode.
    const bool isWrong = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
                         (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return isWrong ? 0 : length;
}

/// Reads bytes that are not UTF-8 as Windows-1252, which includes Latin-1.
void appendAsUtf8(QByteArray &text, QByteArrayView bytes)
{
    if (bytes.isValidUtf8()) {
        text.append(bytes);
        return;
    }
    while (!bytes.isEmpty()) {
        if (const qsizetype length = sequenceLength(bytes); length > 0) {
            text.append(bytes.first(length));
            bytes = bytes.sliced(length);
            continue;
        }
        const auto byte = static_cast<unsigned char>(bytes.front());
        const char16_t character =
            byte < 0xA0 ? windowsCharacters[static_cast<std::size_t>(byte - 0x80)] : char16_t{byte};
        text.append(QString(QChar(character)).toUtf8());
        bytes = bytes.sliced(1);
    }
}

/// Converts UTF-16 to UTF-8 if its byte order follows from a mark or from the first characters; leaves
/// anything else as it is, without a mark.
QByteArray withoutUtf16(const QByteArray &bytes)
{
    using Encoding = QStringConverter::Encoding;
    const auto decoded = [&bytes](Encoding encoding) {
        const QString text = QStringDecoder(encoding).decode(bytes);
        return text.toUtf8();
    };
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        return bytes.sliced(3);
    }
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith(QByteArrayView("B\0E\0", 4))) {
        return decoded(Encoding::Utf16LE);
    }
    if (bytes.startsWith("\xFE\xFF") || bytes.startsWith(QByteArrayView("\0B\0E", 4))) {
        return decoded(Encoding::Utf16BE);
    }
    return bytes;
}

bool hasPrefix(QByteArrayView line, QByteArrayView prefix)
{
    return line.size() >= prefix.size() &&
           qstrnicmp(line.data(), prefix.size(), prefix.data(), prefix.size()) == 0;
}

/// Reads a text line by line and rebuilds it.
class LineReader {
public:
    explicit LineReader(qsizetype size) { m_text.reserve(size + size / 16); }

    /// Takes an unfolded line. False if there is no point in going on.
    bool take(QByteArrayView line)
    {
        if (hasPrefix(line, "BEGIN:")) {
            m_calendars += isCalendar(line.sliced(6)) ? 1 : 0;
            if (++m_level > maximumNesting) {
                return false;
            }
        } else if (hasPrefix(line, "END:")) {
            m_ends += isCalendar(line.sliced(4)) ? 1 : 0;
            --m_level;
        }
        QByteArray whole;
        appendAsUtf8(whole, line);
        for (QByteArray &repaired : repairedLines(whole)) {
            const bool isWanted = m_filter.wants(repaired);
            if (m_filter.isEventClosed()) {
                write("END:VEVENT");
            }
            if (isWanted) {
                write(std::move(repaired));
            }
        }
        return true;
    }

    std::expected<QByteArray, CalendarTextError> result()
    {
        if (m_level > maximumNesting) {
            return std::unexpected(CalendarTextError{false, u"it is nested too deeply"_s});
        }
        if (m_calendars == 0) {
            return std::unexpected(CalendarTextError{false, u"it holds no calendar"_s});
        }
        if (m_ends < m_calendars) {
            return std::unexpected(CalendarTextError{true, u"its end is missing"_s});
        }
        return std::move(m_text);
    }

private:
    static bool isCalendar(QByteArrayView name) { return hasPrefix(name.trimmed(), "VCALENDAR"); }

    void write(QByteArray line)
    {
        cut(line);
        for (qsizetype from = 0; from < line.size(); from += foldedLineLength) {
            m_text.append(from > 0 ? "\r\n " : "");
            m_text.append(QByteArrayView(line).sliced(from, std::min(foldedLineLength, line.size() - from)));
        }
        m_text.append(line.isEmpty() ? "" : "\r\n");
    }

    /// Cuts an overlong value, between two characters; drops a line whose parameters are too long.
    static void cut(QByteArray &line)
    {
        if (line.size() <= maximumValueBytes) {
            return;
        }
        const qsizetype separator = valueSeparator(line);
        if (separator < 0 || separator > maximumValueBytes) {
            line.clear();
            return;
        }
        qsizetype end = std::min(line.size(), separator + 1 + maximumValueBytes);
        const auto isInside = [&line](qsizetype place) {
            return place < line.size() && (static_cast<unsigned char>(line[place]) & 0xC0) == 0x80;
        };
        while (isInside(end)) {
            --end;
        }
        line.truncate(end);
        // Half of an escape sequence would stand for another character.
        const auto backslashes =
            std::find_if(line.crbegin(), line.crend(), [](char character) { return character != '\\'; }) -
            line.crbegin();
        line.chop(backslashes % 2);
    }

    QByteArray m_text;
    ComponentFilter m_filter;
    int m_level = 0;
    int m_calendars = 0;
    int m_ends = 0;
};

/// Passes each line of `text`, unfolded, to `reader`.
void readLines(const QByteArray &text, LineReader &reader)
{
    const char lineEnd = text.contains('\n') ? '\n' : '\r';
    QByteArray line;
    for (qsizetype from = 0; from < text.size();) {
        const qsizetype found = text.indexOf(lineEnd, from);
        const qsizetype end = found < 0 ? text.size() : found;
        QByteArrayView piece = QByteArrayView(text).sliced(from, end - from);
        if (piece.endsWith('\r')) {
            piece.chop(1);
        }
        line.append(piece);
        from = end + 1;
        if (from < text.size() && (text[from] == ' ' || text[from] == '\t')) {
            ++from;
            continue;
        }
        if (!line.isEmpty() && !reader.take(line)) {
            return;
        }
        line.clear();
    }
}

} // namespace

std::expected<QByteArray, CalendarTextError> toCalendarText(const QByteArray &bytes)
{
    QByteArray text = withoutUtf16(bytes);
    // The library takes the text to end at the first zero.
    text.replace('\0', ' ');
    const QByteArray beginning = text.first(std::min<qsizetype>(text.size(), 1'000)).trimmed();
    if (beginning.isEmpty() || (beginning.size() < 15 && hasPrefix("BEGIN:VCALENDAR", beginning))) {
        return std::unexpected(CalendarTextError{true, u"it is empty"_s});
    }
    LineReader reader(text.size());
    readLines(text, reader);
    return reader.result();
}

} // namespace corvane
