// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <wayland-client.h>
#include <wayland-cursor.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>
#include <xdg-output-unstable-v1-client-protocol.h>

namespace corvane {

void WaylandDestroyer::operator()(wl_buffer *object) const
{
    wl_buffer_destroy(object);
}

void WaylandDestroyer::operator()(wl_compositor *object) const
{
    wl_compositor_destroy(object);
}

void WaylandDestroyer::operator()(wl_cursor_theme *object) const
{
    wl_cursor_theme_destroy(object);
}

void WaylandDestroyer::operator()(wl_output *object) const
{
    if (wl_output_get_version(object) >= WL_OUTPUT_RELEASE_SINCE_VERSION) {
        wl_output_release(object);
    } else {
        wl_output_destroy(object);
    }
}

void WaylandDestroyer::operator()(wl_pointer *object) const
{
    if (wl_pointer_get_version(object) >= WL_POINTER_RELEASE_SINCE_VERSION) {
        wl_pointer_release(object);
    } else {
        wl_pointer_destroy(object);
    }
}

void WaylandDestroyer::operator()(wl_region *object) const
{
    wl_region_destroy(object);
}

void WaylandDestroyer::operator()(wl_registry *object) const
{
    wl_registry_destroy(object);
}

void WaylandDestroyer::operator()(wl_seat *object) const
{
    wl_seat_destroy(object);
}

void WaylandDestroyer::operator()(wl_shm *object) const
{
    wl_shm_destroy(object);
}

void WaylandDestroyer::operator()(wl_surface *object) const
{
    wl_surface_destroy(object);
}

void WaylandDestroyer::operator()(zwlr_layer_shell_v1 *object) const
{
    if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION) {
        zwlr_layer_shell_v1_destroy(object);
    } else {
        // The compositor keeps its side until the connection closes.
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(object));
    }
}

void WaylandDestroyer::operator()(zwlr_layer_surface_v1 *object) const
{
    zwlr_layer_surface_v1_destroy(object);
}

void WaylandDestroyer::operator()(zxdg_output_manager_v1 *object) const
{
    zxdg_output_manager_v1_destroy(object);
}

void WaylandDestroyer::operator()(zxdg_output_v1 *object) const
{
    zxdg_output_v1_destroy(object);
}

} // namespace corvane
