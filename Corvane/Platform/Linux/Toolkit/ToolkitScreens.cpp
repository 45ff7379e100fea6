// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"

#include "Corvane/Platform/Linux/Banners/DesktopGeometry.h"
#include "Corvane/Platform/Linux/Toolkit/SessionMonitors.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Platform/Linux/X11/ReservedAreas.h"
#include "Corvane/Platform/Linux/X11/WindowPlacement.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace corvane {

namespace {

/// What the window manager and the docks reserve, in the server's pixels.
ReservedAreas reservedAreas()
{
    ReservedAreas areas;
    const auto size = x11::rootSize();
    if (!size) {
        return areas;
    }
    areas.desktop = QSize(size->width, size->height);
    const std::uint32_t root = x11::rootWindow();
    for (const std::uint32_t window : x11::property(root, "_NET_CLIENT_LIST")) {
        std::vector<std::uint32_t> strut = x11::property(window, "_NET_WM_STRUT_PARTIAL");
        if (strut.empty()) {
            strut = x11::property(window, "_NET_WM_STRUT");
        }
        if (const auto read = Strut::fromProperty(strut, areas.desktop)) {
            areas.struts.push_back(*read);
        }
    }
    const auto desktop = x11::property(root, "_NET_CURRENT_DESKTOP");
    const QByteArray name = "_GTK_WORKAREAS_D" + QByteArray::number(desktop.empty() ? 0 : desktop.front());
    const auto values = x11::property(root, name.constData());
    for (std::size_t i = 0; i + 3 < values.size(); i += 4) {
        areas.workAreas.emplace_back(static_cast<int>(values[i]), static_cast<int>(values[i + 1]),
                                     static_cast<int>(values[i + 2]), static_cast<int>(values[i + 3]));
    }
    return areas;
}

/// The screen in the server's pixels as the toolkit sees it: Qt reports its position in those, but its size
/// in logical pixels.
QRect reportedPixels(const QScreen &screen)
{
    return {screen.geometry().topLeft(),
            (QSizeF(screen.geometry().size()) * screen.devicePixelRatio()).toSize()};
}

/// The same as the compositor sees it; none if it does not know the screen.
std::optional<QRect> shownPixels(const QScreen &screen, const WaylandConnection &compositor)
{
    std::vector<SessionMonitor> monitors;
    std::optional<std::size_t> own;
    for (const QScreen *each : QGuiApplication::screens()) {
        const auto output = std::ranges::find(compositor.outputs(), each->name(), &WaylandOutput::name);
        if (output != compositor.outputs().end() && !output->area.isEmpty()) {
            if (each == &screen) {
                own = monitors.size();
            }
            monitors.push_back({.corner = each->geometry().topLeft(), .area = output->area});
        }
    }
    const auto parts = shownParts(monitors);
    return own && parts ? std::optional(parts->at(*own)) : std::nullopt;
}

} // namespace

QRect ToolkitScreens::pixelsOf(const QScreen &screen) const
{
    const auto shown = m_compositor != nullptr ? shownPixels(screen, *m_compositor) : std::nullopt;
    return shown.value_or(reportedPixels(screen));
}

Screen ToolkitScreens::describe(const QScreen &screen, const ReservedAreas &reserved) const
{
    const double ratio = screen.devicePixelRatio();
    const QRect pixels = pixelsOf(screen);
    const bool isAsReported = pixels == reportedPixels(screen);
    const QRectF frame = isAsReported ? QRectF(screen.geometry())
                                      : QRectF(screen.geometry().topLeft(), QSizeF(pixels.size()) / ratio);
    const QRect visible = reserved.visiblePart(pixels);
    const QRectF points(frame.topLeft() + QPointF(visible.topLeft() - pixels.topLeft()) / ratio,
                        QSizeF(visible.size()) / ratio);
    // With a single monitor, Qt also knows work areas that only the window manager announces.
    const QRectF both =
        isAsReported ? points & inPoints(screen.availableGeometry(), frame, ratio) : points & frame;
    return {.name = screen.name(),
            .frame = pointsUp(frame),
            .visibleFrame = pointsUp(both.isEmpty() ? frame : both)};
}

std::optional<Screen> ToolkitScreens::describe(const QScreen *screen) const
{
    return screen != nullptr ? std::optional(describe(*screen, reservedAreas())) : std::nullopt;
}

std::vector<Screen> ToolkitScreens::screens() const
{
    const ReservedAreas reserved = reservedAreas();
    std::vector<Screen> screens;
    for (const QScreen *screen : QGuiApplication::screens()) {
        screens.push_back(describe(*screen, reserved));
    }
    return screens;
}

std::optional<Screen> ToolkitScreens::mainScreen() const
{
    return describe(QGuiApplication::primaryScreen());
}

std::optional<Screen> ToolkitScreens::keyWindowScreen() const
{
    const QWindow *window = QGuiApplication::focusWindow();
    return window != nullptr ? describe(window->screen()) : std::nullopt;
}

Point ToolkitScreens::pointerLocation() const
{
    // The middle of the pixel: after y is flipped, its edges belong to the neighbouring pixels. The position
    // comes from the server, because Qt rounds to whole points, which may lie outside the screen.
    constexpr QPointF middle(0.5, 0.5);
    const bool isHidden = m_compositor != nullptr && QGuiApplication::screens().size() > 1;
    auto pixel = isHidden ? x11::placeOfNewWindow(m_patience) : std::nullopt;
    if (!pixel) {
        pixel = x11::pointer();
    }
    if (pixel) {
        for (const QScreen *screen : QGuiApplication::screens()) {
            const QRect pixels = pixelsOf(*screen);
            if (pixels.contains(pixel->x, pixel->y)) {
                const QPointF inside = QPointF(pixel->x, pixel->y) + middle - pixels.topLeft();
                return pointsUp(pixels.topLeft() + inside / screen->devicePixelRatio());
            }
        }
    }
    return pointsUp(QPointF(QCursor::pos()) + middle);
}

} // namespace corvane
