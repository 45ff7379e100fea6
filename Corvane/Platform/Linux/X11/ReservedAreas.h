// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QSize>

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {

/// An edge of the desktop that a dock keeps for itself, in the server's pixels: the area it covers.
struct Strut {
    Qt::Edge edge = Qt::TopEdge;
    QRect area;

    /// Reads the property of a dock's window: twelve values, or four that reach along the whole edge. None
    /// when it keeps nothing, or the values make no sense. A dock keeps one edge.
    [[nodiscard]] static std::optional<Strut> fromProperty(const std::vector<std::uint32_t> &values,
                                                           QSize desktop);
};

/// All that is kept from the windows on a desktop of one or several monitors, in the server's pixels.
struct ReservedAreas {
    QSize desktop;
    std::vector<Strut> struts;
    std::vector<QRect> workAreas; ///< one a monitor, where the window manager tells them

    /// The part of the monitor `screen` that windows may use; never empty: a monitor of which nothing would
    /// be left is left whole.
    [[nodiscard]] QRect visiblePart(const QRect &screen) const;
};

} // namespace corvane
