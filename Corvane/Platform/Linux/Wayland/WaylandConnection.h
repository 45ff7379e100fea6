// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandCursor.h"
#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointF>
#include <QRect>
#include <QString>

#include <cstdint>
#include <functional>
#include <list>
#include <memory>

class QSocketNotifier;
struct wl_display;

namespace corvane {

/// Receives the pointer events of a surface; positions in points, from the surface's upper left corner.
class WaylandPointerTarget {
public:
    virtual ~WaylandPointerTarget() = default;

    virtual void pointerEntered(QPointF at) = 0;
    virtual void pointerMoved(QPointF at) = 0;
    virtual void pointerPressed(Qt::MouseButton button) = 0;
    virtual void pointerReleased(Qt::MouseButton button) = 0;
    virtual void pointerLeft() = 0;
};

/// One monitor as the compositor describes it.
struct WaylandOutput {
    std::uint32_t number = 0; ///< the compositor's name for the global; never reused
    WaylandRef<wl_output> proxy;
    WaylandRef<zxdg_output_v1> extent;
    QString name;
    QRect area;    ///< in points of the whole desktop, y downwards
    int scale = 1; ///< pixels per point, rounded up
};

/// A connection to the Wayland compositor, independent of the toolkit's, for kinds of surfaces that the
/// toolkit does not make. Main thread only.
///
/// When the compositor ends or reports an error, `lost` is emitted and the connection closes. open() can then
/// be called again.
class WaylandConnection final : public QObject {
    Q_OBJECT

public:
    WaylandConnection();
    ~WaylandConnection() override;

    /// Connects to the compositor that the environment names, unless connected. Blocks for two round trips,
    /// at most a second each. False if there is no compositor or it does not answer.
    bool open();
    [[nodiscard]] bool isOpen() const { return m_display != nullptr; }

    /// Whether the compositor offers surfaces above full-screen windows, and the positions of its monitors.
    [[nodiscard]] bool offersOverlays() const;

    /// The monitors in the order in which the compositor announced them; `area` is empty until it is known.
    [[nodiscard]] const std::list<WaylandOutput> &outputs() const { return m_outputs; }
    /// The monitor that contains `point` of the desktop; null if there is none.
    [[nodiscard]] const WaylandOutput *outputAt(QPointF point) const;
    /// The desktop's y at which the upward y is 0: the lower edge of the first monitor.
    [[nodiscard]] double zeroLine() const;

    /// The compositor's globals; null while the connection is not open.
    [[nodiscard]] wl_compositor *compositor() const { return m_compositor.get(); }
    [[nodiscard]] wl_shm *sharedMemory() const { return m_sharedMemory.get(); }
    [[nodiscard]] zwlr_layer_shell_v1 *layerShell() const { return m_layerShell.get(); }

    /// A new surface; its pointer events go to `target` until removeTarget(target).
    [[nodiscard]] WaylandRef<wl_surface> makeSurface(WaylandPointerTarget &target);
    void removeTarget(WaylandPointerTarget &target);

    /// Sends queued requests; until then they have no effect.
    void flush();

    /// Sends queued requests and blocks while the compositor's events arrive, until `isDone` or `deadline`.
    /// False if it is not done, or if the connection is not open.
    [[nodiscard]] bool waitUntil(const std::function<bool()> &isDone, QDeadlineTimer deadline);

Q_SIGNALS:
    void outputsChanged();
    /// Emitted before a lost connection is closed: receivers must destroy all objects made through it.
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
    WaylandCursor m_cursor;
    WaylandPointerTarget *m_target = nullptr; ///< of the surface under the pointer
    std::list<WaylandOutput> m_outputs;
};

} // namespace corvane
