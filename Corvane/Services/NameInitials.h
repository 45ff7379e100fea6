// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace corvane {

/// The first characters of the words of `text`: "Anna Maria" is "A. M.", "王小明" is "王.". "…" where it has
/// no words.
[[nodiscard]] QString initials(const QString &text);

/// Takes pupils' names and links out of texts that leave the machine. A pure function of the names that it
/// was made with.
class NameInitials {
public:
    /// `names` are the pupils' full names, in any order. Each word of one counts as a name, too, unless it
    /// begins with a small letter, as "de" does.
    explicit NameInitials(const QStringList &names);

    /// `text` on one line and without links. Names are cut to their initials, in whatever case they are
    /// written; one of Latin letters where it is not part of a longer word. What a line of the log holds in
    /// `student="…"` and `title="…"` is cut, whether the name is known or not.
    [[nodiscard]] QString applied(const QString &text) const;

private:
    struct Name {
        QString text;
        QString initials;
        bool isBeginning = false; ///< of a name that is longer than what is sought
    };

    void add(const QString &name);
    [[nodiscard]] const Name *nameAt(const QString &line, qsizetype position) const;

    QHash<char16_t, std::vector<Name>> m_names; ///< by their first unit without case, the longest first
};

} // namespace corvane
