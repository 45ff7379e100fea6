// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>
#include <QRect>

#include <optional>
#include <vector>

namespace corvane {

/// One monitor of a Wayland session.
struct SessionMonitor {
    QPoint corner; ///< where it begins on XWayland's root window, in pixels
    QRect area;    ///< what it shows, in points of the compositor's layout
};

/// The part of XWayland's root window that each of `monitors` shows, in pixels. XWayland reports the right
/// corner, but the size of the monitor's mode: if monitors have different scales, GNOME gives X11 programs
/// the resolution of the largest one on all of them. None if the scale cannot be told, as with one monitor.
[[nodiscard]] std::optional<std::vector<QRect>> shownParts(const std::vector<SessionMonitor> &monitors);

} // namespace corvane
