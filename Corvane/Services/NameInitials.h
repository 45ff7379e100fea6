// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace corvane {

/// The initials of the words of `text`: "Anna Maria" becomes "A. M.", "王小明" becomes "王."; "…" if it has
/// no words.
[[nodiscard]] QString initials(const QString &text);

/// Removes students' names and links from texts that leave the machine. Its results depend only on the text
/// and the names passed to the constructor.
class NameInitials {
public:
    /// `names` are the students' full names, in any order. Each word of a name also counts as a name, unless
    /// it begins with a lower-case letter, as "de" does.
    explicit NameInitials(const QStringList &names);

    /// `text` on one line, without links. Names are reduced to their initials, regardless of case; names in
    /// Latin letters only where they are not part of a longer word. The values of `student="…"` and
    /// `title="…"` in a log line are always reduced, even unknown names.
    [[nodiscard]] QString applied(const QString &text) const;

private:
    struct Name {
        QString text;
        QString initials;
        bool isBeginning = false; ///< the beginning of a name that exceeds the compared length
    };

    void add(const QString &name);
    [[nodiscard]] const Name *nameAt(const QString &line, qsizetype position) const;

    QHash<char16_t, std::vector<Name>> m_names; ///< by their case-folded first unit, longest first
};

} // namespace corvane
