// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerWindow.h"

#include "Corvane/Platform/Linux/Banners/DesktopGeometry.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace corvane {

namespace {

/// XWayland may report a screen as smaller than it is, so a banner's centre may lie beside all of them.
QScreen *nearestScreen(QPoint centre)
{
    const auto distance = [centre](const QScreen *screen) {
        const QRect area = screen->geometry();
        const QPoint nearest(std::clamp(centre.x(), area.left(), area.right()),
                             std::clamp(centre.y(), area.top(), area.bottom()));
        return (centre - nearest).manhattanLength();
    };
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto found = std::ranges::min_element(screens, {}, distance);
    return found != screens.end() ? *found : nullptr;
}

} // namespace

X11BannerWindow::X11BannerWindow(const Setting &setting)
    : BannerCard(setting, Qt::ToolTip | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                              Qt::WindowDoesNotAcceptFocus)
{
    setAttribute(Qt::WA_AlwaysShowToolTips); // the program is never active while a banner is up
    // No list of windows shows it. Without an icon of its own, the toolkit would draw the program's in four
    // sizes.
    QPixmap icon(1, 1);
    icon.fill(Qt::transparent);
    setWindowIcon(icon);
    place();
}

void X11BannerWindow::setOnScreen(bool isOnScreen)
{
    if (!isOnScreen) {
        hide();
        return;
    }
    if (!isVisible()) {
        show();
        updateShape();
    }
    if (x11::connection() != nullptr) {
        raise(); // a remapped window returns to its old place in the stack
    }
}

QRectF X11BannerWindow::onDesktop(const Rect &points) const
{
    return desktopRect(points);
}

void X11BannerWindow::moveWindow(QPoint corner, QPoint centre)
{
    if (QScreen *screen = nearestScreen(centre)) {
        setScreen(screen);
    }
    move(corner);
}

void X11BannerWindow::drawn()
{
    if (!isComposited()) {
        updateShape();
    }
    update();
}

void X11BannerWindow::updateShape()
{
    xcb_connection_t *server = x11::connection();
    // Qt recreates the X window when it shows it: only the shown window can be given a shape.
    if (server == nullptr || !isVisible() || windowHandle() == nullptr) {
        return;
    }
    // Under a compositing manager only the input shape is set, to the card at rest, so that the card can be
    // clicked while it still grows. Otherwise the window itself is cut, to nothing while the card is
    // invisible.
    const double ratio = devicePixelRatioF();
    const QRectF card = isComposited() ? QRectF(restingCard()) : cardRect();
    std::vector<xcb_rectangle_t> rectangles;
    if (isComposited() || drawnMoment().alpha > 0) {
        for (const QRect &row :
             roundedRows(QRectF(card.topLeft() * ratio, card.size() * ratio), shape().cornerRadius * ratio)) {
            rectangles.push_back({static_cast<std::int16_t>(row.x()), static_cast<std::int16_t>(row.y()),
                                  static_cast<std::uint16_t>(row.width()),
                                  static_cast<std::uint16_t>(row.height())});
        }
    }
    xcb_shape_rectangles(server, XCB_SHAPE_SO_SET,
                         isComposited() ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(windowHandle()->winId()), 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(server);
}

} // namespace corvane
