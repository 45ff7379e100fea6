// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <vector>

namespace corvane {

/// The outline of a banner's card and its shadow, in points.
struct CardShape {
    double cornerRadius = 0;
    double shadowBlur = 0;    ///< twice the standard deviation of the blur
    double shadowOpacity = 0; ///< of black, 0 to 1

    /// How far the shadow extends beyond the card.
    [[nodiscard]] int margin() const;
};

/// The shadow of a card of `size`, including the shape's margin, at `devicePixelRatio`. The area below the
/// card is left out.
[[nodiscard]] QImage cardShadow(const CardShape &shape, QSizeF size, double devicePixelRatio);

/// A rectangle with rounded corners as rows of pixels: all pixels whose centre lies inside. Equal adjacent
/// rows are merged into one rectangle.
[[nodiscard]] std::vector<QRect> roundedRows(const QRectF &rectangle, double cornerRadius);

} // namespace corvane
