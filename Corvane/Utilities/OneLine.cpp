// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/OneLine.h"

#include "Corvane/Utilities/PlainText.h"

#include <algorithm>

namespace corvane {

QString oneLine(const QString &text, qsizetype maximumLength)
{
    QString line;
    line.reserve(std::min(text.size(), maximumLength));
    for (const QChar c : text) {
        // Never splits a surrogate pair.
        if (line.size() >= maximumLength && !(c.isLowSurrogate() && line.back().isHighSurrogate())) {
            break;
        }
        if (isControl(c) || c.category() == QChar::Separator_Space) {
            if (!line.isEmpty() && line.back() != u' ') {
                line += u' ';
            }
        } else if (!turnsDirection(c)) {
            line += c;
        }
    }
    if (line.endsWith(u' ')) {
        line.chop(1);
    }
    return line;
}

} // namespace corvane
