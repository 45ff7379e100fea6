// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/ReservedAreas.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

/// A property's value clamped to 0..`end`: another program's window may claim anything.
int clamped(std::uint32_t value, int end)
{
    return static_cast<int>(std::min<std::uint32_t>(value, static_cast<std::uint32_t>(std::max(end, 0))));
}

} // namespace

std::optional<Strut> Strut::fromProperty(const std::vector<std::uint32_t> &values, QSize desktop)
{
    constexpr std::size_t edges = 4;
    constexpr std::size_t edgesAndSpans = 12;
    if (values.size() < edges) {
        return std::nullopt;
    }
    const bool hasSpans = values.size() >= edgesAndSpans;
    constexpr std::array edgeOrder{Qt::LeftEdge, Qt::RightEdge, Qt::TopEdge, Qt::BottomEdge};
    for (std::size_t i = 0; i < edges; ++i) {
        const Qt::Edge edge = edgeOrder[i];
        const bool isUpright = edge == Qt::LeftEdge || edge == Qt::RightEdge;
        const int thickness = clamped(values[i], isUpright ? desktop.width() : desktop.height());
        if (thickness == 0) {
            continue;
        }
        const int length = isUpright ? desktop.height() : desktop.width();
        const int from = hasSpans ? clamped(values[edges + 2 * i], length) : 0;
        const int to = hasSpans ? std::min(clamped(values[edges + 2 * i + 1], length) + 1, length) : length;
        if (to <= from) {
            return std::nullopt;
        }
        switch (edge) {
        case Qt::LeftEdge:
            return Strut{edge, QRect(0, from, thickness, to - from)};
        case Qt::RightEdge:
            return Strut{edge, QRect(desktop.width() - thickness, from, thickness, to - from)};
        case Qt::TopEdge:
            return Strut{edge, QRect(from, 0, to - from, thickness)};
        case Qt::BottomEdge:
            return Strut{edge, QRect(from, desktop.height() - thickness, to - from, thickness)};
        }
    }
    return std::nullopt;
}

QRect ReservedAreas::visiblePart(const QRect &screen) const
{
    QRect visible = screen;
    for (const Strut &strut : struts) {
        // Struts are measured from the desktop's edge, so the strut of a dock between two monitors covers all
        // of the outer one. It applies to the monitor that contains its inner edge.
        QRect left = visible;
        switch (strut.edge) {
        case Qt::LeftEdge:
            left.setLeft(std::max(left.left(), strut.area.right() + 1));
            break;
        case Qt::RightEdge:
            left.setRight(std::min(left.right(), strut.area.left() - 1));
            break;
        case Qt::TopEdge:
            left.setTop(std::max(left.top(), strut.area.bottom() + 1));
            break;
        case Qt::BottomEdge:
            left.setBottom(std::min(left.bottom(), strut.area.top() - 1));
            break;
        }
        if (strut.area.intersects(screen) && !left.isEmpty()) {
            visible = left;
        }
    }
    QRect widest;
    for (const QRect &area : workAreas) {
        const QRect common = area & screen;
        if (qint64{common.width()} * common.height() > qint64{widest.width()} * widest.height()) {
            widest = common;
        }
    }
    const QRect both = widest.isEmpty() ? visible : visible & widest;
    return both.isEmpty() ? visible : both;
}

QRectF inPoints(const QRectF &available, const QRectF &screen, double ratio)
{
    constexpr double rounding = 1; // points
    const QRectF enlarged(screen.topLeft() + (available.topLeft() - screen.topLeft()) * ratio,
                          available.size() * ratio);
    const bool fits = screen.adjusted(-rounding, -rounding, rounding, rounding).contains(enlarged);
    return ratio > 1 && fits ? enlarged & screen : available;
}

} // namespace corvane
