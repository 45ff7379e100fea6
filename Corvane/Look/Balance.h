// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

class QFont;
class QString;

namespace corvane::look {

/// The smallest width at which `text` in `font` takes no more lines than at `width`. Its lines then have
/// about the same length, so that the last line is rarely a single word. Words are not broken.
[[nodiscard]] int balancedWidth(const QString &text, const QFont &font, int width);

} // namespace corvane::look
