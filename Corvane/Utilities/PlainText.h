// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Whether a line ends here, or a terminal takes the character for a command: the control characters and the
/// separators of lines and paragraphs.
[[nodiscard]] bool isControl(QChar character);

/// Whether the character turns the direction in which what follows is written: the embeddings, overrides and
/// isolates.
[[nodiscard]] bool turnsDirection(QChar character);

/// A stranger's text for a line of the log, another program or a terminal: each control character in it is a
/// space, and what would turn the direction of the text around it is left out.
[[nodiscard]] QString plainText(const QString &text);

} // namespace corvane
