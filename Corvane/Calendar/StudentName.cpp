// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/StudentName.h"

#include <QStringList>

#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Booking platforms put the name of this class platform and a serial number around the student's name.
constexpr QStringView tuokeyun = u"拓课云";

constexpr QStringView separators = u"-–—|•:()[]【】";

/// Removes each code of two to four upper-case letters in parentheses, as in "Anna (ABC)", and the white
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

/// The origin of a unit of a folded text.
struct FoldedUnit {
    qsizetype source = 0; ///< index in the original of the character it was folded from
    qsizetype next = 0;   ///< index in the original after that character and its marks
    bool isFirst = true;  ///< whether it is the first unit that its character folds to
};

/// A text without letter case and diacritics.
struct FoldedText {
    QString text;
    std::vector<FoldedUnit> units;
};

/// The folded form of one character of one or two UTF-16 units; empty for a mark.
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
            // Fast path: most titles are mostly ASCII, and each is folded a dozen times.
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
            // A mark that folds away belongs to the character before it and is removed with it.
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
/// that folds to several units, such as a Korean syllable, is never split.
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

} // namespace

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

QString studentName(const QString &title, TeachingPlatform platform)
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

} // namespace corvane
