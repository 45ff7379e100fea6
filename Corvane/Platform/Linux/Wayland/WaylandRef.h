// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

struct wl_buffer;
struct wl_compositor;
struct wl_cursor_theme;
struct wl_output;
struct wl_pointer;
struct wl_region;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_surface;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;
struct zxdg_output_manager_v1;
struct zxdg_output_v1;

namespace corvane {

/// Destroys an object by the request that its protocol version offers.
struct WaylandDestroyer {
    void operator()(wl_buffer *object) const;
    void operator()(wl_compositor *object) const;
    void operator()(wl_cursor_theme *object) const;
    void operator()(wl_output *object) const;
    void operator()(wl_pointer *object) const;
    void operator()(wl_region *object) const;
    void operator()(wl_registry *object) const;
    void operator()(wl_seat *object) const;
    void operator()(wl_shm *object) const;
    void operator()(wl_surface *object) const;
    void operator()(zwlr_layer_shell_v1 *object) const;
    void operator()(zwlr_layer_surface_v1 *object) const;
    void operator()(zxdg_output_manager_v1 *object) const;
    void operator()(zxdg_output_v1 *object) const;
};

/// Owns a Wayland object. Must be destroyed before its connection closes.
template <typename Object>
using WaylandRef = std::unique_ptr<Object, WaylandDestroyer>;

} // namespace corvane
