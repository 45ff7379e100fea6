// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusTitle.h"

#include "Corvane/Utilities/PlainText.h"

#include <QStringView>

#include <algorithm>

namespace corvane {

QString harmlessTitle(const QString &title)
{
    QString text;
    const QStringView head = QStringView(title).first(std::min<qsizetype>(title.size(), maximumTitleLength));
    text.reserve(head.size());
    for (qsizetype i = 0; i < head.size(); ++i) {
        const QChar c = head.at(i);
        if (c.isHighSurrogate()) {
            // An unpaired surrogate, as at the cut, is dropped.
            if (i + 1 < head.size() && head.at(i + 1).isLowSurrogate()) {
                text += c;
                text += head.at(++i);
            }
        } else if (!c.isLowSurrogate()) {
            text += c;
        }
    }
    return plainText(text);
}

} // namespace corvane
