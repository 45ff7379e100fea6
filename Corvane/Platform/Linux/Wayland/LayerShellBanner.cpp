// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/LayerShellBanner.h"

#include "Corvane/Utilities/DebugLogService.h"
#include "Corvane/Utilities/DesktopPoints.h"

#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <QCoreApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cstdint>
#include <limits>

using namespace Qt::StringLiterals;

namespace corvane {

struct LayerShellBanner::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layerSurface{
        .configure =
            [](void *data, zwlr_layer_surface_v1 *surface, std::uint32_t serial, std::uint32_t,
               std::uint32_t) {
                auto *banner = static_cast<LayerShellBanner *>(data);
                zwlr_layer_surface_v1_ack_configure(surface, serial);
                banner->m_isConfigured = true;
                banner->paint();
            },
        .closed =
            [](void *data, zwlr_layer_surface_v1 *) {
                static_cast<LayerShellBanner *>(data)->closeSurface(u"the compositor closed it"_s);
            },
    };
};

LayerShellBanner::LayerShellBanner(const Setting &setting, WaylandConnection &connection,
                                   DebugLogService &logger)
    : BannerCard(setting, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
    , m_connection(connection)
    , m_logger(logger)
    , m_buffers([this] {
        if (m_isStale) {
            paint();
        }
    })
{
    setAttribute(Qt::WA_DontShowOnScreen);
    connect(&m_connection, &WaylandConnection::lost, this,
            [this] { closeSurface(u"the compositor has ended or refused it"_s); });
    connect(&m_connection, &WaylandConnection::outputsChanged, this, &LayerShellBanner::followOutputs);
    place();
}

LayerShellBanner::~LayerShellBanner()
{
    unmap();
}

QRectF LayerShellBanner::onDesktop(const Rect &points) const
{
    return desktopRect(points, m_connection.zeroLine());
}

void LayerShellBanner::moveWindow(QPoint corner, QPoint centre)
{
    m_corner = corner;
    m_centre = centre;
    move(corner); // so that the widget knows its position
    followOutputs();
}

void LayerShellBanner::followOutputs()
{
    const WaylandOutput *now = output();
    const int scale = now != nullptr ? now->scale : 1;
    const bool isOther = now != nullptr && now->number != m_outputNumber;
    if (scale != m_scale) {
        m_scale = scale;
        drawn();
    }
    if (m_layerSurface == nullptr) {
        return;
    }
    const bool isGone =
        m_outputNumber != 0 && std::ranges::none_of(m_connection.outputs(), [this](const WaylandOutput &one) {
            return one.number == m_outputNumber;
        });
    if (isGone) {
        // Not every compositor sends `closed` in this case.
        closeSurface(u"its monitor has gone"_s);
    } else if (isOther) {
        unmap();
        map();
    } else {
        setMargins(now);
        wl_surface_commit(m_surface.get());
        m_connection.flush();
    }
}

void LayerShellBanner::setOnScreen(bool isOnScreen)
{
    if (!isOnScreen) {
        unmap();
        hide();
        return;
    }
    if (!isVisible()) {
        show();
        map();
    }
}

void LayerShellBanner::map()
{
    if (!m_connection.offersOverlays()) {
        m_logger.log(u"banner not shown: no compositor to show it"_s);
        return;
    }
    const WaylandOutput *on = output();
    m_outputNumber = on != nullptr ? on->number : 0;
    m_surface = m_connection.makeSurface(*this);
    m_layerSurface.reset(zwlr_layer_shell_v1_get_layer_surface(
        m_connection.layerShell(), m_surface.get(), on != nullptr ? on->proxy.get() : nullptr,
        ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "quillet-banner"));
    zwlr_layer_surface_v1_add_listener(m_layerSurface.get(), &Listeners::layerSurface, this);
    zwlr_layer_surface_v1_set_size(m_layerSurface.get(), static_cast<std::uint32_t>(width()),
                                   static_cast<std::uint32_t>(height()));
    zwlr_layer_surface_v1_set_anchor(m_layerSurface.get(),
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    // -1: docks do not move the banner, and the banner moves nothing.
    zwlr_layer_surface_v1_set_exclusive_zone(m_layerSurface.get(), -1);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layerSurface.get(),
                                                     ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    setMargins(on);

    const WaylandRef<wl_region> card(wl_compositor_create_region(m_connection.compositor()));
    for (const QRect &row : roundedRows(QRectF(restingCard()), shape().cornerRadius)) {
        wl_region_add(card.get(), row.x(), row.y(), row.width(), row.height());
    }
    wl_surface_set_input_region(m_surface.get(), card.get());
    wl_surface_commit(m_surface.get()); // painted once the compositor has sent `configure`
    m_connection.flush();
}

void LayerShellBanner::setMargins(const WaylandOutput *output)
{
    const QPoint inside = output != nullptr ? m_corner - output->area.topLeft() : m_corner;
    zwlr_layer_surface_v1_set_margin(m_layerSurface.get(), inside.y(), 0, 0, inside.x());
}

void LayerShellBanner::unmap()
{
    if (m_surface == nullptr) {
        return;
    }
    m_connection.removeTarget(*this);
    m_isConfigured = false;
    m_isStale = false;
    m_buttons = Qt::NoButton;
    m_layerSurface.reset();
    m_surface.reset();
    m_buffers.clear();
    m_connection.flush();
}

void LayerShellBanner::closeSurface(const QString &reason)
{
    if (m_surface != nullptr) {
        m_logger.log(u"banner taken off the screen: "_s + reason);
        unmap();
    }
}

void LayerShellBanner::drawn()
{
    if (isAtRest()) {
        update();
    } else {
        paint();
    }
}

bool LayerShellBanner::event(QEvent *event)
{
    const bool isHandled = BannerCard::event(event);
    if (event->type() == QEvent::UpdateRequest) {
        paint();
    }
    return isHandled;
}

void LayerShellBanner::paint()
{
    if (!m_isConfigured) {
        return;
    }
    SharedMemoryBuffers::Buffer *buffer = m_buffers.next(m_connection.sharedMemory(), size() * m_scale);
    m_isStale = buffer == nullptr;
    if (buffer == nullptr) {
        return;
    }
    buffer->image.setDevicePixelRatio(m_scale);
    buffer->image.fill(Qt::transparent);
    render(&buffer->image, {}, {}, DrawChildren);
    buffer->isBusy = true;
    wl_surface_set_buffer_scale(m_surface.get(), m_scale);
    wl_surface_attach(m_surface.get(), buffer->handle.get(), 0, 0);
    constexpr std::int32_t all = std::numeric_limits<std::int32_t>::max();
    wl_surface_damage(m_surface.get(), 0, 0, all, all);
    wl_surface_commit(m_surface.get());
    m_connection.flush();
}

void LayerShellBanner::pointerEntered(QPointF at)
{
    m_pointer = at;
    QEnterEvent event(at, at, at + m_corner);
    sendEvent(event);
}

void LayerShellBanner::pointerMoved(QPointF at)
{
    m_pointer = at;
    sendMouseEvent(QEvent::MouseMove, Qt::NoButton);
}

void LayerShellBanner::pointerPressed(Qt::MouseButton button)
{
    m_buttons |= button;
    sendMouseEvent(QEvent::MouseButtonPress, button);
}

void LayerShellBanner::pointerReleased(Qt::MouseButton button)
{
    m_buttons &= ~Qt::MouseButtons(button);
    sendMouseEvent(QEvent::MouseButtonRelease, button);
}

void LayerShellBanner::pointerLeft()
{
    QEvent event(QEvent::Leave);
    sendEvent(event);
}

void LayerShellBanner::sendMouseEvent(QEvent::Type type, Qt::MouseButton button)
{
    QMouseEvent event(type, m_pointer, m_pointer, m_pointer + m_corner, button, m_buttons, Qt::NoModifier);
    sendEvent(event);
}

void LayerShellBanner::sendEvent(QEvent &event)
{
    // The toolkit's window finds the widget under the pointer and remembers which one was pressed.
    if (QWindow *window = windowHandle()) {
        QCoreApplication::sendEvent(window, &event);
    }
}

} // namespace corvane
