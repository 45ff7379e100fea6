// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

/// The text of a settings file in the format of the toolkit's own settings, so that earlier versions of the
/// program can read it.
namespace corvane {

/// One line of such a file; a value may span several lines of the text.
struct IniLine {
    enum class Kind { section, entry, other, garbage };
    Kind kind = Kind::other; ///< other: a comment or an empty line
    QByteArray text = {};    ///< as in the file, with its line end
    bool isEnded = true;     ///< by a line break that is not part of the value
    QByteArray key = {};     ///< of an entry, without its section; of a section, its name
    QByteArray value = {};   ///< of an entry, still encoded
    bool isGeneral = false;  ///< in section "General", or before the first section
};

[[nodiscard]] std::vector<IniLine> iniLines(const QByteArray &text);

/// Decodes a value: a text, data or a list of texts; other types are texts in the file.
[[nodiscard]] QVariant decodedIniValue(const QByteArray &value);

/// Encodes texts, data, booleans and numbers.
[[nodiscard]] QByteArray encodedIniValue(const QVariant &value);

} // namespace corvane
