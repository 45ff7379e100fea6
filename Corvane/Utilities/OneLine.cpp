// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/OneLine.h"

#include <algorithm>

namespace corvane {

namespace {

bool turnsDirection(char16_t c)
{
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

} // namespace

QString oneLine(const QString &text, qsizetype maximumLength)
{
    QString line;
    line.reserve(std::min(text.size(), maximumLength));
    for (const QChar c : text) {
        // Not between the two halves of one character.
        if (line.size() >= maximumLength && !(c.isLowSurrogate() && line.back().isHighSurrogate())) {
            break;
        }
        const QChar::Category category = c.category();
        const bool isBreak = category == QChar::Other_Control || category == QChar::Separator_Line ||
                             category == QChar::Separator_Paragraph || category == QChar::Separator_Space;
        if (isBreak) {
            if (!line.isEmpty() && line.back() != u' ') {
                line += u' ';
            }
        } else if (!turnsDirection(c.unicode())) {
            line += c;
        }
    }
    if (line.endsWith(u' ')) {
        line.chop(1);
    }
    return line;
}

} // namespace corvane
