// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/WaylandScreens.h"

#include "Corvane/Platform/Linux/Wayland/PreferredOutput.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Utilities/DesktopPoints.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace corvane {

Screen WaylandScreens::describe(const WaylandOutput &output) const
{
    const Rect frame = pointsUp(QRectF(output.area), m_connection.zeroLine());
    return {.name = output.name, .frame = frame, .visibleFrame = frame};
}

std::vector<Screen> WaylandScreens::screens() const
{
    std::vector<Screen> screens;
    for (const WaylandOutput &output : m_connection.outputs()) {
        if (!output.area.isEmpty()) {
            screens.push_back(describe(output));
        }
    }
    return screens;
}

std::optional<Screen> WaylandScreens::mainScreen() const
{
    const std::vector<Screen> all = screens();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::optional<Screen> WaylandScreens::keyWindowScreen() const
{
    const QWindow *window = QGuiApplication::focusWindow();
    const WaylandOutput *output = window != nullptr && window->screen() != nullptr
                                      ? m_connection.outputAt(QRectF(window->screen()->geometry()).center())
                                      : nullptr;
    return output != nullptr ? std::optional(describe(*output)) : std::nullopt;
}

Point WaylandScreens::pointerLocation() const
{
    if (screens().size() > 1) {
        if (const WaylandOutput *preferred = preferredOutput(m_connection)) {
            const Rect frame = describe(*preferred).frame;
            return {frame.midX(), frame.midY()};
        }
    }
    // The middle of the pixel: flipping y gives its edges to its neighbours.
    constexpr QPointF middle(0.5, 0.5);
    const QPointF seen = QPointF(QCursor::pos()) + middle;
    if (m_connection.outputAt(seen) == nullptr) {
        if (const auto main = mainScreen()) {
            return {main->frame.midX(), main->frame.midY()};
        }
    }
    return pointsUp(seen, m_connection.zeroLine());
}

} // namespace corvane
