// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/IniText.h"

#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

bool endsLine(char c)
{
    return c == '\n' || c == '\r';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

struct LineExtent {
    qsizetype length = 0; ///< including the line's end
    bool isOpen = false;  ///< the text ends within a quotation or an escape
    bool isEnded = false; ///< by a line break that is not part of the value
};

LineExtent lineAt(const QByteArray &text, qsizetype start)
{
    bool isQuoted = false;
    qsizetype place = start;
    const bool isComment = text.at(start) == ';';
    for (; place < text.size(); ++place) {
        const char c = text.at(place);
        if (endsLine(c) && !isQuoted) {
            break;
        }
        if (isComment) {
            continue;
        }
        if (c == ';' && !isQuoted && place > start) {
            return {.length = place - start}; // the comment that follows is a line of its own
        }
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == '\\') {
            ++place; // what follows belongs to the value, even a line break
            if (place + 1 < text.size() && endsLine(text.at(place)) && endsLine(text.at(place + 1)) &&
                text.at(place) != text.at(place + 1)) {
                ++place;
            }
        }
    }
    const bool isOpen = isQuoted || place > text.size();
    const bool isEnded = place < text.size();
    if (place + 1 < text.size() && text.at(place) == '\r' && text.at(place + 1) == '\n') {
        ++place;
    }
    return {.length = std::min(place + 1, text.size()) - start, .isOpen = isOpen, .isEnded = isEnded};
}

enum class Section { general, other, garbage };

IniLine lineOf(const QByteArray &text, const LineExtent &extent, Section &section)
{
    const bool isOpen = extent.isOpen;
    IniLine line{.text = text, .isEnded = extent.isEnded};
    const QByteArray content = text.trimmed();
    const qsizetype equals = content.indexOf('=');
    if (!isOpen && (content.isEmpty() || content.startsWith(';') || content.startsWith('#'))) {
        line.kind = IniLine::Kind::other;
    } else if (!isOpen && content.startsWith('[')) {
        const qsizetype end = content.indexOf(']');
        line.kind = end < 0 ? IniLine::Kind::garbage : IniLine::Kind::section;
        line.key = content.mid(1, end - 1).trimmed();
        section = end < 0                                                 ? Section::garbage
                  : line.key.compare("general", Qt::CaseInsensitive) == 0 ? Section::general
                                                                          : Section::other;
    } else if (isOpen || equals <= 0 || section == Section::garbage) {
        // Without its unreadable section head, this entry would end up in another section.
        line.kind = IniLine::Kind::garbage;
    } else {
        line.kind = IniLine::Kind::entry;
        line.key = content.first(equals).trimmed();
        line.value = content.sliced(equals + 1).trimmed();
    }
    line.isGeneral = section == Section::general;
    return line;
}

// The character that a backslash and this letter stand for; zero if they stand for none.
char16_t escaped(char letter)
{
    constexpr std::pair<char, char16_t> letters[] = {{'a', u'\a'}, {'b', u'\b'},  {'f', u'\f'}, {'n', u'\n'},
                                                     {'r', u'\r'}, {'t', u'\t'},  {'v', u'\v'}, {'"', u'"'},
                                                     {'?', u'?'},  {'\\', u'\\'}, {'\'', u'\''}};
    const auto *const found = std::ranges::find(letters, letter, [](const auto &pair) { return pair.first; });
    return found == std::end(letters) ? u'\0' : found->second;
}

int digit(char c, int base)
{
    const int value = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                             : base;
    return value < base ? value : -1;
}

// Reads encoded values: texts, quoted or not, separated by commas.
class ValueReader {
public:
    explicit ValueReader(const QByteArray &value) : m_value(value) {}

    QStringList read()
    {
        skipBlanks();
        while (m_place < m_value.size()) {
            const char c = m_value.at(m_place);
            if (c == '\\') {
                ++m_place;
                readEscape();
            } else if (c == '"') {
                ++m_place;
                m_wasQuoted = true;
                m_isQuoted = !m_isQuoted;
                if (!m_isQuoted) {
                    skipBlanks();
                }
            } else if (c == ',' && !m_isQuoted) {
                ++m_place;
                finishText();
                skipBlanks();
            } else {
                readPlain();
            }
        }
        finishText();
        return m_texts;
    }

private:
    void skipBlanks()
    {
        while (m_place < m_value.size() && isBlank(m_value.at(m_place))) {
            ++m_place;
        }
    }

    void readEscape()
    {
        if (m_place == m_value.size()) {
            return;
        }
        const char c = m_value.at(m_place++);
        if (c == 'x') {
            readNumber(16);
        } else if (digit(c, 8) >= 0) {
            --m_place;
            readNumber(8);
        } else if (endsLine(c)) {
            if (m_place < m_value.size() && endsLine(m_value.at(m_place)) && m_value.at(m_place) != c) {
                ++m_place;
            }
        } else if (const char16_t meant = escaped(c)) {
            m_text += QChar(meant);
        }
        m_solid = m_text.size();
    }

    void readNumber(int base)
    {
        char16_t number = 0;
        const qsizetype start = m_place;
        while (m_place < m_value.size() && digit(m_value.at(m_place), base) >= 0) {
            number = static_cast<char16_t>(number * base + digit(m_value.at(m_place), base));
            ++m_place;
        }
        if (m_place > start) {
            m_text += QChar(number);
        }
    }

    void readPlain()
    {
        qsizetype end = m_place + 1;
        while (end < m_value.size() && QByteArrayView("\\\",").indexOf(m_value.at(end)) < 0) {
            ++end;
        }
        m_text += QString::fromUtf8(QByteArrayView(m_value).sliced(m_place, end - m_place));
        m_place = end;
    }

    void finishText()
    {
        // A value with a quotation keeps all blanks; an escaped character is kept in any case.
        if (!m_wasQuoted) {
            while (m_text.size() > m_solid && (m_text.back() == u' ' || m_text.back() == u'\t')) {
                m_text.chop(1);
            }
        }
        m_texts.append(std::exchange(m_text, {}));
        m_solid = 0;
        m_wasQuoted = false;
    }

    const QByteArray &m_value;
    qsizetype m_place = 0;
    QStringList m_texts;
    QString m_text;
    qsizetype m_solid = 0; ///< up to here the text keeps its blanks
    bool m_isQuoted = false;
    bool m_wasQuoted = false;
};

QByteArray encodedText(const QString &text)
{
    QByteArray encoded;
    bool needsQuotes = text.startsWith(u' ') || text.endsWith(u' ') || text.isEmpty();
    bool isAfterNumber = false;
    // Data is written in ASCII, as the toolkit writes it.
    const char16_t firstEscaped = text.startsWith(u"@ByteArray("_s) ? u'\x7F' : u'\xFFFF';
    for (qsizetype place = 0; place < text.size(); ++place) {
        const char16_t c = text.at(place).unicode();
        const bool isHex = c < 0x80 && digit(static_cast<char>(c), 16) >= 0;
        const bool isLoneSurrogate =
            text.at(place).isSurrogate() && !(text.at(place).isHighSurrogate() && place + 1 < text.size() &&
                                              text.at(place + 1).isLowSurrogate());
        if (c < 0x20 || (c >= 0x7F && c < 0xA0) || c >= firstEscaped || isLoneSurrogate ||
            (isAfterNumber && isHex)) {
            encoded += "\\x" + QByteArray::number(c, 16);
            isAfterNumber = true;
            continue;
        }
        isAfterNumber = false;
        needsQuotes = needsQuotes || c == u';' || c == u',' || c == u'=';
        if (c == u'"' || c == u'\\') {
            encoded += '\\';
        }
        const qsizetype length = text.at(place).isHighSurrogate() ? 2 : 1;
        encoded += QStringView(text).sliced(place, length).toUtf8();
        place += length - 1;
    }
    return needsQuotes ? '"' + encoded + '"' : encoded;
}

} // namespace

std::vector<IniLine> iniLines(const QByteArray &text)
{
    std::vector<IniLine> lines;
    Section section = Section::general;
    for (qsizetype start = text.startsWith("\xEF\xBB\xBF") ? 3 : 0; start < text.size();) {
        const LineExtent extent = lineAt(text, start);
        lines.push_back(lineOf(text.sliced(start, extent.length), extent, section));
        start += extent.length;
    }
    return lines;
}

QVariant decodedIniValue(const QByteArray &value)
{
    const QStringList texts = ValueReader(value).read();
    if (texts.size() != 1) {
        return texts;
    }
    const QString &text = texts.first();
    if (text.startsWith(u"@ByteArray("_s) && text.endsWith(u')')) {
        return text.sliced(11).chopped(1).toLatin1();
    }
    if (text.startsWith(u"@String("_s) && text.endsWith(u')')) {
        return text.sliced(8).chopped(1);
    }
    if (text == u"@Invalid()"_s) {
        return {};
    }
    return text.startsWith(u"@@"_s) ? text.sliced(1) : text;
}

QByteArray encodedIniValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray) {
        return encodedText(u"@ByteArray("_s + QString::fromLatin1(value.toByteArray()) + u')');
    }
    const QString text = value.toString();
    return encodedText(text.startsWith(u'@') ? u'@' + text : text);
}

} // namespace corvane
