// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QString>

#include <cstdint>
#include <list>
#include <memory>

class QSocketNotifier;
struct wl_display;

namespace corvane {

/// What a surface hears of the pointer; places in points, from the surface's upper left corner.
class WaylandPointerTarget {
public:
    virtual ~WaylandPointerTarget() = default;

    virtual void pointerEntered(QPointF at) = 0;
    virtual void pointerMoved(QPointF at) = 0;
    virtual void pointerPressed(Qt::MouseButton button) = 0;
    virtual void pointerReleased(Qt::MouseButton button) = 0;
    virtual void pointerLeft() = 0;
};

/// One monitor as the compositor tells of it.
struct WaylandOutput {
    std::uint32_t number = 0; ///< the compositor's number for it, which no later one gets
    WaylandRef<wl_output> proxy;
    WaylandRef<zxdg_output_v1> extent;
    QString name;
    QRect area;    ///< in points of the whole desktop, y downwards
    int scale = 1; ///< pixels of a point, rounded up
};

/// A connection to the Wayland compositor beside the toolkit's own, and independent of it: for surfaces of
/// kinds that the toolkit does not make. Main thread only.
///
/// A compositor that ends, or that calls an error, is `lost`: all that was made through the connection must
/// be let go of then. It can be opened again.
class WaylandConnection final : public QObject {
    Q_OBJECT

public:
    WaylandConnection();
    ~WaylandConnection() override;

    /// Connects to the compositor that the environment names, unless that is done, and waits for what it has
    /// to tell: two answers, at most a second each. False when there is none, or it is silent.
    bool open();
    [[nodiscard]] bool isOpen() const { return m_display != nullptr; }

    /// Whether the compositor places surfaces above full-screen windows, and tells where its monitors are.
    [[nodiscard]] bool offersOverlays() const;

    /// The monitors in the order in which the compositor told of them; those that it has described.
    [[nodiscard]] const std::list<WaylandOutput> &outputs() const { return m_outputs; }
    /// The one that the point of the desktop lies on; none when none does.
    [[nodiscard]] const WaylandOutput *outputAt(QPointF point) const;
    /// The desktop's y of the line that is 0 upwards: the lower edge of the first monitor.
    [[nodiscard]] double zeroLine() const;

    /// For what is made through the connection; none while it is not open.
    [[nodiscard]] wl_compositor *compositor() const { return m_compositor.get(); }
    [[nodiscard]] wl_shm *sharedMemory() const { return m_sharedMemory.get(); }
    [[nodiscard]] zwlr_layer_shell_v1 *layerShell() const { return m_layerShell.get(); }

    /// A new surface; its pointer events go to `target` until removeTarget(target).
    [[nodiscard]] WaylandRef<wl_surface> makeSurface(WaylandPointerTarget &target);
    void removeTarget(WaylandPointerTarget &target);

    /// Sends what was asked for; without it nothing happens.
    void flush();

Q_SIGNALS:
    void outputsChanged();
    /// The connection is about to be closed: whoever holds something of it destroys that now.
    void lost();

private:
    struct Listeners;

    bool waitForAnswer();
    bool dispatch();
    void readEvents();
    void close();
    void addGlobal(std::uint32_t number, const char *interface, std::uint32_t version);
    void removeGlobal(std::uint32_t number);
    void requestExtent(WaylandOutput &output);
    void showCursor(std::uint32_t serial);

    wl_display *m_display = nullptr;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    WaylandRef<wl_registry> m_registry;
    WaylandRef<wl_compositor> m_compositor;
    WaylandRef<wl_shm> m_sharedMemory;
    WaylandRef<zwlr_layer_shell_v1> m_layerShell;
    WaylandRef<zxdg_output_manager_v1> m_outputManager;
    WaylandRef<wl_seat> m_seat;
    WaylandRef<wl_pointer> m_pointer;
    WaylandRef<wl_cursor_theme> m_cursorTheme;
    WaylandRef<wl_surface> m_cursor;
    WaylandPointerTarget *m_target = nullptr; ///< whose surface the pointer is over
    std::list<WaylandOutput> m_outputs;
};

} // namespace corvane
