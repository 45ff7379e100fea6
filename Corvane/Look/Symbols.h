// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

/// The program's symbols, drawn in any colour at any size. Main thread only.
namespace corvane::look {

/// How strong a symbol is drawn: `bold` thickens the lines of one made of lines, and what is cut out of a
/// filled one.
enum class SymbolWeight { regular, bold };

/// Whether there is a symbol of this name, for example "bell.fill".
[[nodiscard]] bool hasSymbol(const QString &name);

/// The symbol `name`, which must exist, in `color` on nothing, as an icon that is sharp at every size and
/// pixel ratio.
[[nodiscard]] QIcon symbolIcon(const QString &name, const QColor &color);

/// The same in the colour that `ink` has under the application's palette whenever it is drawn.
[[nodiscard]] QIcon symbolIcon(const QString &name, Ink ink);

/// The symbol `name`, which must exist, as a square picture of `size` points at `devicePixelRatio`.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, int size, const QColor &color,
                                   double devicePixelRatio, SymbolWeight weight = SymbolWeight::regular);

} // namespace corvane::look
