// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/SessionMonitors.h"

#include <QSizeF>

#include <algorithm>

namespace corvane {

std::optional<std::vector<QRect>> shownParts(const std::vector<SessionMonitor> &monitors)
{
    double pixelsPerPoint = 0;
    for (const SessionMonitor &monitor : monitors) {
        const QPoint points = monitor.area.topLeft();
        if (points.x() > 0) {
            pixelsPerPoint = std::max(pixelsPerPoint, double(monitor.corner.x()) / points.x());
        } else if (points.y() > 0) {
            pixelsPerPoint = std::max(pixelsPerPoint, double(monitor.corner.y()) / points.y());
        }
    }
    if (pixelsPerPoint <= 0) {
        return std::nullopt;
    }
    std::vector<QRect> parts;
    parts.reserve(monitors.size());
    for (const SessionMonitor &monitor : monitors) {
        parts.emplace_back(monitor.corner, (QSizeF(monitor.area.size()) * pixelsPerPoint).toSize());
    }
    return parts;
}

} // namespace corvane
