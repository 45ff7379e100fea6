// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// A point on the desktop, in points; x points right, y points up.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point &, const Point &) = default;
};

/// Width and height in points.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size &, const Size &) = default;
};

/// A rectangle on the desktop, in points, with its lower-left corner; y points up.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] constexpr double minX() const { return x; }
    [[nodiscard]] constexpr double midX() const { return x + width / 2; }
    [[nodiscard]] constexpr double maxX() const { return x + width; }
    [[nodiscard]] constexpr double minY() const { return y; }
    [[nodiscard]] constexpr double midY() const { return y + height / 2; }
    [[nodiscard]] constexpr double maxY() const { return y + height; }

    /// Whether `point` lies inside; the left and lower edges are included, the others are not.
    [[nodiscard]] constexpr bool contains(Point point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    /// This rectangle scaled by `factor` about its centre.
    [[nodiscard]] constexpr Rect scaledAboutCentre(double factor) const
    {
        return {midX() - width * factor / 2, midY() - height * factor / 2, width * factor, height * factor};
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

} // namespace corvane
