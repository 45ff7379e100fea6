// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// The area at one edge of the desktop that a dock reserves, in the server's pixels.
struct Strut {
    Qt::Edge edge = Qt::TopEdge;
    QRect area;

    /// Reads a dock window's strut property: twelve values, or four that apply along the whole edge. None if
    /// the dock reserves nothing or the values make no sense. Only the first edge that a dock reserves
    /// counts.
    [[nodiscard]] static std::optional<Strut> fromProperty(const std::vector<std::uint32_t> &values,
                                                           QSize desktop);
};

/// Everything that is reserved on a desktop of one or several monitors, in the server's pixels.
struct ReservedAreas {
    QSize desktop;
    std::vector<Strut> struts;
    std::vector<QRect> workAreas; ///< one per monitor, where the window manager announces them

    /// The part of the monitor `screen` that windows may use; never empty: a reservation that would leave
    /// nothing is ignored.
    [[nodiscard]] QRect visiblePart(const QRect &screen) const;
};

/// The part of the monitor `screen` that windows may use, from `available`, the toolkit's idea of it, both in
/// points of `ratio` pixels. KWin announces that part in points, which the toolkit takes for pixels: what
/// fits `ratio` times into the monitor both ways is enlarged.
[[nodiscard]] QRectF inPoints(const QRectF &available, const QRectF &screen, double ratio);

} // namespace corvane
