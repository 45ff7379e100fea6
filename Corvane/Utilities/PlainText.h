// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Whether the character ends a line or may control a terminal: control characters, line and paragraph
/// separators.
[[nodiscard]] bool isControl(QChar character);

/// Whether the character changes the direction of the following text: bidirectional embeddings, overrides and
/// isolates.
[[nodiscard]] bool turnsDirection(QChar character);

/// An untrusted text made safe for a log line, another program or a terminal: control characters become
/// spaces, and bidirectional control characters are removed.
[[nodiscard]] QString plainText(const QString &text);

} // namespace corvane
