// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace corvane {

/// Tells the teacher how to get the bell on a desktop that does not show it. `desktop` is the value of
/// $XDG_CURRENT_DESKTOP: names separated by colons.
[[nodiscard]] QString missingBellHint(const QByteArray &desktop);

} // namespace corvane
