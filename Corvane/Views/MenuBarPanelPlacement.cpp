// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanelPlacement.h"

#include "Corvane/Views/ScreenGeometry.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

enum class Edge { top, bottom, right, left };

// The edge of `visible` that `point` is furthest beyond, or nearest to if it is inside.
Edge edgeAt(Point point, const Rect &visible)
{
    Edge edge = Edge::top;
    double most = point.y - visible.maxY();
    const auto consider = [&](Edge other, double beyond) {
        if (beyond > most) {
            most = beyond;
            edge = other;
        }
    };
    consider(Edge::bottom, visible.minY() - point.y);
    consider(Edge::right, point.x - visible.maxX());
    consider(Edge::left, visible.minX() - point.x);
    return edge;
}

// `start`, moved so that `length` fits between `from` and `to`; `from` if it does not fit.
double kept(double start, double length, double from, double to)
{
    return std::max(std::min(start, to - length), from);
}

// The whole point nearest to `wanted` at which `length` still fits between `from` and `to`.
double onWholePoint(double wanted, double length, double from, double to)
{
    const double whole = std::round(kept(wanted, length, from, to));
    return std::min(std::max(whole, std::ceil(from)), std::max(std::floor(to - length), std::ceil(from)));
}

MenuBarPanelPlacement placed(Size size, double x, double y, const Rect &visible)
{
    constexpr double gap = MenuBarPanelPlacement::gap;
    return {.frame = {onWholePoint(x, size.width, visible.minX() + gap, visible.maxX() - gap),
                      onWholePoint(y, size.height, visible.minY() + gap, visible.maxY() - gap), size.width,
                      size.height},
            .visible = visible};
}

Size fitted(Size size, const Rect &visible)
{
    constexpr double gaps = 2 * MenuBarPanelPlacement::gap;
    return {std::max(std::min(std::ceil(size.width), std::floor(visible.width - gaps)), 1.0),
            std::max(std::min(std::ceil(size.height), std::floor(visible.height - gaps)), 1.0)};
}

MenuBarPanelPlacement inCorner(Size wanted, const Screen &screen)
{
    const Rect &visible = screen.visibleFrame;
    const double top = screen.frame.maxY() - visible.maxY();
    const double bottom = visible.minY() - screen.frame.minY();
    const double left = visible.minX() - screen.frame.minX();
    const double right = screen.frame.maxX() - visible.maxX();
    const Size size = fitted(wanted, visible);
    const bool isUpright = top <= 0 && bottom <= 0 && std::max(left, right) > 0;
    const bool isLeft = isUpright && left > right;
    // A vertical dock has its bell at the bottom, a horizontal one at the right.
    const bool isBelow = isUpright || bottom > top;
    return placed(size, isLeft ? visible.minX() : visible.maxX(), isBelow ? visible.minY() : visible.maxY(),
                  visible);
}

} // namespace

MenuBarPanelPlacement MenuBarPanelPlacement::find(Size size, std::optional<Point> item,
                                                  const std::vector<Screen> &screens,
                                                  const Screen &mainScreen)
{
    if (!item) {
        return inCorner(size, mainScreen);
    }
    const Rect visible = screenAt(*item, screens, mainScreen).visibleFrame;
    const Size fit = fitted(size, visible);
    const double centredX = item->x - fit.width / 2;
    const double centredY = item->y - fit.height / 2;
    switch (edgeAt(*item, visible)) {
    case Edge::top: {
        const double below = item->y < visible.maxY() ? item->y - clearance : visible.maxY();
        return placed(fit, centredX, below - fit.height, visible);
    }
    case Edge::bottom: {
        const double above = item->y >= visible.minY() ? item->y + clearance : visible.minY();
        return placed(fit, centredX, above, visible);
    }
    case Edge::right: {
        const double before = item->x < visible.maxX() ? item->x - clearance : visible.maxX();
        return placed(fit, before - fit.width, centredY, visible);
    }
    case Edge::left: {
        const double after = item->x >= visible.minX() ? item->x + clearance : visible.minX();
        return placed(fit, after, centredY, visible);
    }
    }
    return inCorner(size, mainScreen);
}

} // namespace corvane
