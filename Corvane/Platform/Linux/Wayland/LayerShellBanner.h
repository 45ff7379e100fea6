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
/// keyboard. The widget itself is shown nowhere: its picture is painted into the surface, and what the
/// pointer does there is handed on to it as to a window of the toolkit's. Clicks on its shadow fall through.
///
/// The compositor may take the surface away, with its monitor or when it ends: that is logged, and the banner
/// goes on unseen.
class LayerShellBanner final : public BannerCard, private WaylandPointerTarget {
    Q_OBJECT

public:
    /// What is passed is borrowed.
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
    bool m_isConfigured = false; ///< whether the compositor has agreed to show the surface
    bool m_isStale = false;      ///< whether something is to be painted as soon as there is a picture for it
    // Let go of in the order that is the other way round.
    WaylandRef<wl_surface> m_surface;
    WaylandRef<zwlr_layer_surface_v1> m_layerSurface;
    std::uint32_t m_outputNumber = 0; ///< of the monitor that the surface is on
    SharedMemoryBuffers m_buffers;
};

} // namespace corvane
