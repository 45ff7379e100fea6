// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/WaylandCursor.h"

#include <wayland-client.h>
#include <wayland-cursor.h>

#include <QByteArray>

namespace corvane {

void WaylandCursor::show(std::uint32_t serial, wl_pointer *pointer, wl_compositor *compositor,
                         wl_shm *sharedMemory)
{
    if (m_theme == nullptr) {
        constexpr int usualSize = 24;
        const int size = qEnvironmentVariableIntValue("XCURSOR_SIZE");
        const QByteArray theme = qgetenv("XCURSOR_THEME");
        m_theme.reset(wl_cursor_theme_load(theme.isEmpty() ? nullptr : theme.constData(),
                                           size > 0 ? size : usualSize, sharedMemory));
    }
    wl_cursor *arrow = m_theme != nullptr ? wl_cursor_theme_get_cursor(m_theme.get(), "left_ptr") : nullptr;
    if (arrow == nullptr || arrow->image_count == 0) {
        return;
    }
    if (m_surface == nullptr) {
        m_surface.reset(wl_compositor_create_surface(compositor));
    }
    wl_cursor_image *image = arrow->images[0];
    wl_pointer_set_cursor(pointer, serial, m_surface.get(), static_cast<std::int32_t>(image->hotspot_x),
                          static_cast<std::int32_t>(image->hotspot_y));
    wl_surface_attach(m_surface.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage(m_surface.get(), 0, 0, static_cast<std::int32_t>(image->width),
                      static_cast<std::int32_t>(image->height));
    wl_surface_commit(m_surface.get());
}

void WaylandCursor::reset()
{
    m_surface.reset();
    m_theme.reset();
}

} // namespace corvane
