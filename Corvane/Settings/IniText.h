// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

/// The text of a settings file, as the toolkit's own settings write and read it, so that earlier versions of
/// the program understand it.
namespace corvane {

/// One line of such a file; a value may go over several lines of the text.
struct IniLine {
    enum class Kind { section, entry, other, garbage };
    Kind kind = Kind::other; ///< other: a comment, or an empty line
    QByteArray text = {};    ///< as it stands in the file, with its end
    QByteArray key = {};     ///< of an entry, also without its section; of a section its name
    QByteArray value = {};   ///< of an entry, encoded
    bool isGeneral = false;  ///< in the section "General", or before the first section
};

[[nodiscard]] std::vector<IniLine> iniLines(const QByteArray &text);

/// A value as it stands in the file: a text, data or a list of texts; what has another type was made a text.
[[nodiscard]] QVariant decodedIniValue(const QByteArray &value);

/// The other way round: for texts, data, truth values and numbers.
[[nodiscard]] QByteArray encodedIniValue(const QVariant &value);

} // namespace corvane
