// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <cstdint>

namespace corvane {

/// The arrow of the user's cursor theme. The surface under the pointer sets its image; otherwise another
/// program's image, or none, stays.
class WaylandCursor {
public:
    /// Shows the arrow; `serial` is that of the event by which the pointer entered the surface. Without a
    /// theme nothing changes.
    void show(std::uint32_t serial, wl_pointer *pointer, wl_compositor *compositor, wl_shm *sharedMemory);

    /// Called before the connection closes.
    void reset();

private:
    WaylandRef<wl_cursor_theme> m_theme;
    WaylandRef<wl_surface> m_surface;
};

} // namespace corvane
