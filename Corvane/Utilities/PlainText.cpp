// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/PlainText.h"

#include <algorithm>

namespace corvane {

bool isControl(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

bool turnsDirection(QChar character)
{
    const char16_t c = character.unicode();
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

QString plainText(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return isControl(c) || turnsDirection(c); })) {
        return text;
    }
    QString plain;
    plain.reserve(text.size());
    for (const QChar c : text) {
        if (!turnsDirection(c)) {
            plain += isControl(c) ? QChar(u' ') : c;
        }
    }
    return plain;
}

} // namespace corvane
