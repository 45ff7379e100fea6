// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/CardShape.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace corvane {

namespace {

/// Replaces each of `count` pixels, `step` apart, by the mean of the 2 × `reach` + 1 pixels around it.
void blurLine(std::uint8_t *first, qsizetype step, int count, int reach, std::vector<std::uint8_t> &line)
{
    for (int i = 0; i < count; ++i) {
        line[static_cast<std::size_t>(i)] = first[i * step];
    }
    const auto at = [&](int i) { return i < 0 || i >= count ? 0 : int{line[static_cast<std::size_t>(i)]}; };
    const int width = 2 * reach + 1;
    int sum = 0;
    for (int i = -reach; i < reach; ++i) {
        sum += at(i);
    }
    for (int i = 0; i < count; ++i) {
        sum += at(i + reach);
        first[i * step] = static_cast<std::uint8_t>((sum + width / 2) / width);
        sum -= at(i - reach);
    }
}

/// Three box blurs in a row approximate a Gaussian blur of this standard deviation.
void blur(QImage &alpha, double deviation)
{
    const int reach =
        std::max(0, static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2)));
    std::vector<std::uint8_t> line(static_cast<std::size_t>(std::max(alpha.width(), alpha.height())));
    std::uint8_t *bits = alpha.bits();
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < alpha.height(); ++y) {
            blurLine(bits + y * alpha.bytesPerLine(), 1, alpha.width(), reach, line);
        }
        for (int x = 0; x < alpha.width(); ++x) {
            blurLine(bits + x, alpha.bytesPerLine(), alpha.height(), reach, line);
        }
    }
}

} // namespace

int CardShape::margin() const
{
    constexpr double reach = 1.5; // three standard deviations
    return static_cast<int>(std::ceil(shadowBlur * reach));
}

QImage cardShadow(const CardShape &shape, QSizeF size, double devicePixelRatio)
{
    const double margin = shape.margin();
    const QSize pixels = ((size + QSizeF(2 * margin, 2 * margin)) * devicePixelRatio).toSize();

    // Along its edges a shadow varies only near the corners: draw that of a small card and stretch its
    // middle.
    const int corner = static_cast<int>(std::ceil((2 * margin + shape.cornerRadius) * devicePixelRatio));
    const QSize small(std::min(pixels.width(), 2 * corner + 1), std::min(pixels.height(), 2 * corner + 1));
    QImage alpha(small, QImage::Format_Alpha8);
    alpha.fill(0);
    QPainter painter(&alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(shape.shadowOpacity)));
    const double inset = margin * devicePixelRatio;
    painter.drawRoundedRect(QRectF(QPointF(), QSizeF(small)).adjusted(inset, inset, -inset, -inset),
                            shape.cornerRadius * devicePixelRatio, shape.cornerRadius * devicePixelRatio);
    painter.end();
    blur(alpha, shape.shadowBlur / 2 * devicePixelRatio);
    const QImage corners = alpha.convertToFormat(QImage::Format_ARGB32_Premultiplied);

    QImage shadow(pixels, QImage::Format_ARGB32_Premultiplied);
    shadow.fill(Qt::transparent);
    QPainter stretcher(&shadow);
    const int fromX[] = {0, small.width() / 2, small.width() / 2 + 1, small.width()};
    const int fromY[] = {0, small.height() / 2, small.height() / 2 + 1, small.height()};
    const int toX[] = {0, fromX[1], pixels.width() - (small.width() - fromX[2]), pixels.width()};
    const int toY[] = {0, fromY[1], pixels.height() - (small.height() - fromY[2]), pixels.height()};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect from(QPoint(fromX[column], fromY[row]),
                             QPoint(fromX[column + 1] - 1, fromY[row + 1] - 1));
            const QRect to(QPoint(toX[column], toY[row]), QPoint(toX[column + 1] - 1, toY[row + 1] - 1));
            stretcher.drawImage(to, corners, from);
        }
    }
    // The card is slightly translucent and must show the desktop behind it, not its own shadow.
    stretcher.setRenderHint(QPainter::Antialiasing);
    stretcher.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    stretcher.setPen(Qt::NoPen);
    stretcher.setBrush(Qt::black);
    stretcher.drawRoundedRect(QRectF(QPointF(), QSizeF(pixels)).adjusted(inset, inset, -inset, -inset),
                              shape.cornerRadius * devicePixelRatio, shape.cornerRadius * devicePixelRatio);
    stretcher.end();
    shadow.setDevicePixelRatio(devicePixelRatio);
    return shadow;
}

std::vector<QRect> roundedRows(const QRectF &rectangle, double cornerRadius)
{
    std::vector<QRect> rows;
    const double radius = std::min({cornerRadius, rectangle.width() / 2, rectangle.height() / 2});
    const int first = static_cast<int>(std::ceil(rectangle.top() - 0.5));
    const int end = static_cast<int>(std::ceil(rectangle.bottom() - 0.5));
    for (int y = first; y < end; ++y) {
        const double middle = y + 0.5;
        const double intoCorner =
            std::max({rectangle.top() + radius - middle, middle - (rectangle.bottom() - radius), 0.0});
        const double inset = radius - std::sqrt(std::max(radius * radius - intoCorner * intoCorner, 0.0));
        const int left = static_cast<int>(std::ceil(rectangle.left() + inset - 0.5));
        const int right = static_cast<int>(std::ceil(rectangle.right() - inset - 0.5));
        if (right <= left) {
            continue;
        }
        if (!rows.empty() && rows.back().left() == left && rows.back().right() == right - 1) {
            rows.back().setBottom(y);
        } else {
            rows.emplace_back(left, y, right - left, 1);
        }
    }
    return rows;
}

} // namespace corvane
