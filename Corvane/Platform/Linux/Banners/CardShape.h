// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <vector>

namespace corvane {

/// How the card of a banner is cut, and the shadow it throws; in points.
struct CardShape {
    double cornerRadius = 0;
    double shadowBlur = 0;    ///< twice the deviation of the blur
    double shadowOpacity = 0; ///< of black, 0 to 1

    /// How far the shadow reaches about the card.
    [[nodiscard]] int margin() const;
};

/// The shadow of a card of `size`, with the shape's margin about it, at `devicePixelRatio`; nothing of it
/// lies under the card itself.
[[nodiscard]] QImage cardShadow(const CardShape &shape, QSizeF size, double devicePixelRatio);

/// A rectangle with rounded corners as rows of pixels: all pixels whose middle lies inside. The rows of the
/// straight part are one rectangle.
[[nodiscard]] std::vector<QRect> roundedRows(const QRectF &rectangle, double cornerRadius);

} // namespace corvane
