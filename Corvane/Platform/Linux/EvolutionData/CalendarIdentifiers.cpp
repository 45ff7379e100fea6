// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarIdentifiers.h"

#include <QHash>

namespace corvane {

namespace {

QByteArrayView lineAt(QByteArrayView text, qsizetype start)
{
    const qsizetype end = text.indexOf('\n', start);
    QByteArrayView line = text.sliced(start, (end < 0 ? text.size() : end) - start);
    return line.endsWith('\r') ? line.chopped(1) : line;
}

/// Removes escapes as the calendar library does.
QByteArray unescaped(const QByteArray &text)
{
    QByteArray plain;
    for (qsizetype place = 0; place < text.size(); ++place) {
        const bool isEscape = text[place] == '\\' && place + 1 < text.size();
        if (!isEscape) {
            plain += text[place];
            continue;
        }
        ++place;
        plain += text[place] == 'n' || text[place] == 'N' ? '\n' : text[place];
    }
    return plain;
}

bool isIdentifier(QByteArrayView line)
{
    return line.size() > 3 && qstrnicmp(line.data(), "UID", 3) == 0 && (line[3] == ':' || line[3] == ';');
}

} // namespace

IdentifierKey identifierKey(QByteArrayView identifier)
{
    return qHash(identifier.trimmed());
}

std::set<IdentifierKey> identifiersIn(const QByteArray &text)
{
    std::set<IdentifierKey> keys;
    const QByteArrayView view(text);
    for (qsizetype start = 0; start < view.size();) {
        QByteArrayView line = lineAt(view, start);
        qsizetype end = view.indexOf('\n', start);
        if (isIdentifier(line)) {
            QByteArray whole = line.toByteArray();
            // A line that begins with a blank continues the previous one.
            while (end >= 0 && end + 1 < view.size() && (view[end + 1] == ' ' || view[end + 1] == '\t')) {
                start = end + 1;
                whole += lineAt(view, start).sliced(1).toByteArray();
                end = view.indexOf('\n', start);
            }
            if (const qsizetype colon = whole.indexOf(':'); colon >= 0) {
                keys.insert(identifierKey(unescaped(whole.sliced(colon + 1))));
            }
        }
        start = end < 0 ? view.size() : end + 1;
    }
    return keys;
}

} // namespace corvane
