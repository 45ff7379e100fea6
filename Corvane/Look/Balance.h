// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

class QFont;
class QString;

namespace corvane::look {

/// The least width at which `text` in `font` takes no more lines than at `width`: there its lines are of much
/// the same length, and no word is left alone on the last one. No word is broken for it.
[[nodiscard]] int balancedWidth(const QString &text, const QFont &font, int width);

} // namespace corvane::look
