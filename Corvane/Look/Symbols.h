// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

/// The program's symbols, in any colour and size. Main thread only.
namespace corvane::look {

/// `bold` thickens the lines of an outlined symbol, and the cut-outs of a filled one.
enum class SymbolWeight { regular, bold };

/// The size of a symbol beside a text in `font`, in points.
[[nodiscard]] int symbolSize(const QFont &font);

/// Whether there is a symbol of this name, for example "bell.fill".
[[nodiscard]] bool hasSymbol(const QString &name);

/// The symbol `name`, which must exist, in `color` on a transparent background, as an icon that is sharp at
/// every size and pixel ratio.
[[nodiscard]] QIcon symbolIcon(const QString &name, const QColor &color);

/// The same in the colour of `ink` under the application's palette at the time of drawing.
[[nodiscard]] QIcon symbolIcon(const QString &name, Ink ink);

/// The symbol `name`, which must exist, as a square picture of `size` points at `devicePixelRatio`.
[[nodiscard]] QPixmap symbolPixmap(const QString &name, int size, const QColor &color,
                                   double devicePixelRatio, SymbolWeight weight = SymbolWeight::regular);

} // namespace corvane::look
