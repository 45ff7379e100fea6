// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/PreferredOutput.h"

#include "Corvane/Platform/Linux/Wayland/SharedMemoryBuffers.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"

#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds patience{250};

/// A transparent pixel above all windows, without the pointer. Below them, some compositors would not say
/// where it is.
class Probe final : public WaylandPointerTarget {
public:
    explicit Probe(WaylandConnection &connection);
    ~Probe() override { m_connection.removeTarget(*this); }
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;

    /// Shows the pixel and returns the output that it is on; null if the compositor does not tell.
    [[nodiscard]] wl_output *output();

    void pointerEntered(QPointF) override {}
    void pointerMoved(QPointF) override {}
    void pointerPressed(Qt::MouseButton) override {}
    void pointerReleased(Qt::MouseButton) override {}
    void pointerLeft() override {}

private:
    struct Listeners;

    WaylandConnection &m_connection;
    WaylandRef<wl_surface> m_surface;
    WaylandRef<zwlr_layer_surface_v1> m_layerSurface;
    SharedMemoryBuffers m_buffers{[] {}};
    wl_output *m_output = nullptr;
    bool m_isConfigured = false;
};

struct Probe::Listeners {
    // Newer libraries have further members: those not named here stay null.
    static constexpr wl_surface_listener surface = [] {
        wl_surface_listener listener{};
        listener.enter = [](void *data, wl_surface *, wl_output *output) {
            static_cast<Probe *>(static_cast<WaylandPointerTarget *>(data))->m_output = output;
        };
        listener.leave = [](void *, wl_surface *, wl_output *) {}; // it never moves
        return listener;
    }();

    static constexpr zwlr_layer_surface_v1_listener layerSurface{
        .configure =
            [](void *data, zwlr_layer_surface_v1 *object, std::uint32_t serial, std::uint32_t,
               std::uint32_t) {
                zwlr_layer_surface_v1_ack_configure(object, serial);
                static_cast<Probe *>(data)->m_isConfigured = true;
            },
        .closed = [](void *, zwlr_layer_surface_v1 *) {},
    };
};

Probe::Probe(WaylandConnection &connection)
    : m_connection(connection)
    , m_surface(connection.makeSurface(*this))
{
    wl_surface_add_listener(m_surface.get(), &Listeners::surface, static_cast<WaylandPointerTarget *>(this));
    m_layerSurface.reset(zwlr_layer_shell_v1_get_layer_surface(connection.layerShell(), m_surface.get(),
                                                               nullptr, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY,
                                                               "quillet-monitor"));
    zwlr_layer_surface_v1_add_listener(m_layerSurface.get(), &Listeners::layerSurface, this);
    zwlr_layer_surface_v1_set_size(m_layerSurface.get(), 1, 1);
    zwlr_layer_surface_v1_set_anchor(m_layerSurface.get(),
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    const WaylandRef<wl_region> nowhere(wl_compositor_create_region(connection.compositor()));
    wl_surface_set_input_region(m_surface.get(), nowhere.get());
    wl_surface_commit(m_surface.get());
}

wl_output *Probe::output()
{
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    if (!m_connection.waitUntil([this] { return m_isConfigured; }, deadline)) {
        return nullptr;
    }
    SharedMemoryBuffers::Buffer *buffer = m_buffers.next(m_connection.sharedMemory(), QSize(1, 1));
    if (buffer == nullptr) {
        return nullptr;
    }
    buffer->image.fill(Qt::transparent);
    wl_surface_attach(m_surface.get(), buffer->handle.get(), 0, 0);
    constexpr std::int32_t all = std::numeric_limits<std::int32_t>::max();
    wl_surface_damage(m_surface.get(), 0, 0, all, all);
    wl_surface_commit(m_surface.get());
    return m_connection.waitUntil([this] { return m_output != nullptr; }, deadline) ? m_output : nullptr;
}

} // namespace

const WaylandOutput *preferredOutput(WaylandConnection &connection)
{
    if (!connection.offersOverlays()) {
        return nullptr;
    }
    const wl_output *shown = Probe(connection).output();
    connection.flush();
    const auto found = std::ranges::find_if(connection.outputs(), [shown](const WaylandOutput &output) {
        return output.proxy.get() == shown && !output.area.isEmpty();
    });
    return found != connection.outputs().end() ? &*found : nullptr;
}

} // namespace corvane
