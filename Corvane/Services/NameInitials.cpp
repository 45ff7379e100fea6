// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/NameInitials.h"

#include "Corvane/Utilities/OneLine.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Names are compared up to this length, which no real name exceeds.
constexpr qsizetype longestName = 200;

/// The student's name in a lesson where none was found.
constexpr QLatin1StringView noName = "Student"_L1;

constexpr QLatin1StringView linkMark = "[link]"_L1;

bool isInWord(QChar unit)
{
    return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate() || unit == u'\'' || unit == u'’';
}

QStringList wordsOf(const QString &text)
{
    QStringList words;
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i == text.size() || !isInWord(text[i])) {
            if (i > begin) {
                words.append(text.mid(begin, i - begin));
            }
            begin = i + 1;
        }
    }
    return words;
}

QString firstCharacter(const QString &word)
{
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, word);
    return word.left(std::max<qsizetype>(boundaries.toNextBoundary(), 1));
}

bool isLatinLetter(QChar unit)
{
    return unit.isLetter() && QChar::script(unit.unicode()) == QChar::Script_Latin;
}

/// Whether the end or beginning of a name between `left` and `right` lies within a longer word. Only among
/// Latin letters: scripts without spaces do not separate a name from its neighbours.
bool isWithinWord(QChar left, QChar right)
{
    return isLatinLetter(left) && (isLatinLetter(right) || right.isMark());
}

QString withoutLinks(QString line)
{
    // With a scheme, or a host with a path; never beyond a quotation mark, which ends a log field.
    static const QRegularExpression links(
        uR"((?:\b[a-z][a-z0-9+.\-]*://|\bwww\.|\b(?:mailto|tel):)[^\s"]+|(?<![/\w.@\-])\w[\w\-]*+(?:\.[\w\-]++)+/[^\s"]*)"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return line.replace(links, linkMark);
}

/// A field of a log line that holds a name.
struct Field {
    qsizetype begin = 0; ///< start of its value
    qsizetype end = 0;
};

/// Whether the quotation mark at `quote` ends a field: the line ends after it, or another field begins.
bool endsField(const QString &line, qsizetype quote)
{
    qsizetype next = quote + 1;
    if (next == line.size()) {
        return true;
    }
    if (line[next] != u' ') {
        return false;
    }
    do {
        ++next;
    } while (next < line.size() && line[next].isLetter());
    return next < line.size() && line[next] == u'=';
}

/// The field that begins at `position` of `line`, if any.
std::optional<Field> fieldAt(const QString &line, qsizetype position)
{
    constexpr std::array keys{"student=\""_L1, "title=\""_L1};
    if (position > 0 && line[position - 1] != u' ') {
        return std::nullopt;
    }
    for (const QLatin1StringView key : keys) {
        if (!QStringView(line).sliced(position).startsWith(key)) {
            continue;
        }
        const qsizetype begin = position + key.size();
        qsizetype end = line.indexOf(u'"', begin);
        while (end >= 0 && !endsField(line, end)) { // quotation marks within the name
            end = line.indexOf(u'"', end + 1);
        }
        return Field{.begin = begin, .end = end < 0 ? line.size() : end};
    }
    return std::nullopt;
}

} // namespace

QString initials(const QString &text)
{
    QStringList found;
    for (const QString &word : wordsOf(oneLine(text, longestName).normalized(QString::NormalizationForm_C))) {
        found.append(firstCharacter(word) + u'.');
    }
    return found.isEmpty() ? u"…"_s : found.join(u' ');
}

NameInitials::NameInitials(const QStringList &names)
{
    for (const QString &name : names) {
        add(name);
    }
    for (std::vector<Name> &sameBeginning : m_names) {
        std::ranges::stable_sort(sameBeginning, std::ranges::greater(),
                                 [](const Name &name) { return name.text.size(); });
    }
}

void NameInitials::add(const QString &name)
{
    const QString line = oneLine(name, longestName).normalized(QString::NormalizationForm_C);
    if (line == noName) {
        return;
    }
    const auto addOne = [this](const QString &text, bool isBeginning) {
        // A single character is no longer than its initial.
        if (text.size() > firstCharacter(text).size()) {
            m_names[text.front().toCaseFolded().unicode()].push_back(
                {.text = text, .initials = corvane::initials(text), .isBeginning = isBeginning});
        }
    };
    if (!line.isEmpty()) {
        addOne(line, line.size() >= longestName);
    }
    for (const QString &word : wordsOf(line)) {
        if (word != line && !word.front().isLower()) {
            addOne(word, false);
        }
    }
}

const NameInitials::Name *NameInitials::nameAt(const QString &line, qsizetype position) const
{
    const auto candidates = m_names.constFind(line[position].toCaseFolded().unicode());
    if (candidates == m_names.constEnd() ||
        (position > 0 && isWithinWord(line[position - 1], line[position]))) {
        return nullptr;
    }
    const auto isThere = [&](const Name &name) {
        const qsizetype end = position + name.text.size();
        return end <= line.size() &&
               QStringView(line).sliced(position, name.text.size()).compare(name.text, Qt::CaseInsensitive) ==
                   0 &&
               (end == line.size() || name.isBeginning || !isWithinWord(line[end - 1], line[end]));
    };
    const auto found = std::ranges::find_if(*candidates, isThere);
    return found != candidates->end() ? &*found : nullptr;
}

QString NameInitials::applied(const QString &text) const
{
    // Reads past the limit, so that a name at the end of the kept part is matched as a whole.
    const QString taken = oneLine(text, longestLine + longestName);
    const QString line = withoutLinks(taken.normalized(QString::NormalizationForm_C));
    const qsizetype end = taken.size() > longestLine ? line.size() - longestName : line.size();
    QString result;
    qsizetype position = 0;
    while (position < end) {
        if (const auto field = fieldAt(line, position)) {
            result += QStringView(line).sliced(position, field->begin - position);
            result += initials(line.mid(field->begin, field->end - field->begin));
            position = field->end;
        } else if (const Name *name = nameAt(line, position)) {
            result += name->initials;
            position += name->text.size();
            if (name->isBeginning) {
                const qsizetype quote = line.indexOf(u'"', position);
                position = quote < 0 ? line.size() : quote;
            }
        } else {
            result += line[position];
            ++position;
        }
    }
    return taken.size() > longestLine ? result + u'…' : result;
}

} // namespace corvane
