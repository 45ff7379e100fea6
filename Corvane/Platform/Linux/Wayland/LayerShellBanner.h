// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/BannerCard.h"
#include "Corvane/Platform/Linux/Wayland/SharedMemoryBuffers.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"

#include <QEvent>

#include <cstdint>

namespace corvane {

class DebugLogService;

/// One banner as a surface of the compositor's overlay layer: above full-screen windows, never with the
/// keyboard. The widget itself is never shown: its picture is painted into the surface, and the surface's
/// pointer events are passed to it as to a toolkit window. Clicks on its shadow go to the window below.
///
/// The compositor may remove the surface, with its monitor or when the compositor ends. That is logged, and
/// the banner goes on invisibly.
class LayerShellBanner final : public BannerCard, private WaylandPointerTarget {
    Q_OBJECT

public:
    /// `connection` and `logger` are borrowed.
    LayerShellBanner(const Setting &setting, WaylandConnection &connection, DebugLogService &logger);
    ~LayerShellBanner() override;

protected:
    [[nodiscard]] QRectF onDesktop(const Rect &points) const override;
    void moveWindow(QPoint corner, QPoint centre) override;
    [[nodiscard]] double drawingRatio() const override { return m_scale; }
    void setOnScreen(bool isOnScreen) override;
    void drawn() override;
    bool event(QEvent *event) override;

private:
    struct Listeners;

    void map();
    void unmap();
    void closeSurface(const QString &reason);
    void setMargins(const WaylandOutput *output);
    void followOutputs();
    void paint();
    [[nodiscard]] const WaylandOutput *output() const { return m_connection.outputAt(QPointF(m_centre)); }

    void pointerEntered(QPointF at) override;
    void pointerMoved(QPointF at) override;
    void pointerPressed(Qt::MouseButton button) override;
    void pointerReleased(Qt::MouseButton button) override;
    void pointerLeft() override;
    void sendMouseEvent(QEvent::Type type, Qt::MouseButton button);
    void sendEvent(QEvent &event);

    WaylandConnection &m_connection;
    DebugLogService &m_logger;
    QPoint m_corner; ///< of the window on the desktop
    QPoint m_centre; ///< of the card on the desktop
    int m_scale = 1;
    QPointF m_pointer;
    Qt::MouseButtons m_buttons;
    bool m_isConfigured = false; ///< whether the compositor has configured the surface
    bool m_isStale = false;      ///< whether to paint as soon as a buffer is free
    // Destroyed in reverse order: buffers first, the surface last.
    WaylandRef<wl_surface> m_surface;
    WaylandRef<zwlr_layer_surface_v1> m_layerSurface;
    std::uint32_t m_outputNumber = 0; ///< of the monitor that the surface is on
    SharedMemoryBuffers m_buffers;
};

} // namespace corvane
