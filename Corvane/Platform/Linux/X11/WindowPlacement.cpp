// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/WindowPlacement.h"

#include "Corvane/Platform/Linux/X11/XcbRef.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <QDeadlineTimer>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <span>

namespace corvane::x11 {

namespace {

constexpr std::chrono::milliseconds patience{250};
constexpr std::uint8_t bitsOfNumber = 32;
constexpr std::int16_t created = 0; // where the pixel is created, in x and y

/// A transparent pixel on a connection of its own: the toolkit would take its events.
class Probe {
public:
    Probe();

    /// Shows the pixel and returns its place on the root window.
    [[nodiscard]] std::optional<PixelPoint> place();

private:
    [[nodiscard]] xcb_connection_t *server() const { return m_server.get(); }
    [[nodiscard]] xcb_atom_t atom(const char *name) const;
    [[nodiscard]] xcb_visualid_t translucentVisual() const;
    void createWindow();
    void describeWindow();
    void set(xcb_atom_t name, xcb_atom_t type, std::span<const std::uint32_t> values);
    [[nodiscard]] bool waitUntilPlaced(QDeadlineTimer deadline);

    OwnConnection m_server{xcb_connect(nullptr, nullptr)}; // takes the window along when it ends
    const xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_window = XCB_NONE;
};

Probe::Probe()
{
    if (xcb_connection_has_error(server()) == 0) {
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(server())).data;
        createWindow();
        describeWindow();
    }
}

xcb_atom_t Probe::atom(const char *name) const
{
    const auto asked = xcb_intern_atom(server(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server(), asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_visualid_t Probe::translucentVisual() const
{
    constexpr std::uint8_t withAlpha = 32;
    for (auto depth = xcb_screen_allowed_depths_iterator(m_screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == withAlpha && depth.data->visuals_len > 0) {
            return xcb_depth_visuals_iterator(depth.data).data->visual_id;
        }
    }
    return XCB_NONE;
}

void Probe::createWindow()
{
    constexpr std::uint8_t withAlpha = 32;
    const xcb_visualid_t visual = translucentVisual();
    if (visual == XCB_NONE) {
        return;
    }
    const xcb_colormap_t colours = xcb_generate_id(server());
    xcb_create_colormap(server(), XCB_COLORMAP_ALLOC_NONE, colours, m_screen->root, visual);
    m_window = xcb_generate_id(server());
    constexpr std::uint32_t transparent = 0;
    const std::array<std::uint32_t, 4> values{transparent, transparent, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                                              colours};
    xcb_create_window(server(), withAlpha, m_window, m_screen->root, created, created, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
}

void Probe::set(xcb_atom_t name, xcb_atom_t type, std::span<const std::uint32_t> values)
{
    xcb_change_property(server(), XCB_PROP_MODE_REPLACE, m_window, name, type, bitsOfNumber,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void Probe::describeWindow()
{
    if (m_window == XCB_NONE) {
        return;
    }
    set(atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, std::array{atom("_NET_WM_WINDOW_TYPE_SPLASH")});
    set(atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
        std::array{atom("_NET_WM_STATE_BELOW"), atom("_NET_WM_STATE_SKIP_TASKBAR"),
                   atom("_NET_WM_STATE_SKIP_PAGER")});
    // A window that takes no input leaves the focus where it is. A user time of zero would too, but then
    // mutter keeps it clear of the focused window, and says that it demands attention.
    constexpr std::uint32_t saysInput = 1;
    constexpr std::array<std::uint32_t, 9> noInput{saysInput, 0};
    set(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, noInput);
    constexpr std::uint32_t saysDecorations = 2;
    constexpr std::array<std::uint32_t, 5> noDecorations{saysDecorations, 0, 0, 0, 0};
    const xcb_atom_t hints = atom("_MOTIF_WM_HINTS");
    set(hints, hints, noDecorations);
}

bool Probe::waitUntilPlaced(QDeadlineTimer deadline)
{
    constexpr std::uint8_t typeMask = 0x7f;
    bool isMapped = false;
    bool isMoved = false;
    while (xcb_connection_has_error(server()) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())}) {
            const int type = event->response_type & typeMask;
            isMapped = isMapped || type == XCB_MAP_NOTIFY;
            if (type == XCB_CONFIGURE_NOTIFY) {
                isMoved = reinterpret_cast<const xcb_configure_notify_event_t *>(event.get())->x != created;
            }
        }
        // Some versions of mutter map first and move then, others the other way round. Before both, they may
        // move it down, below the bar.
        if (isMapped && isMoved) {
            return true;
        }
        pollfd file{.fd = xcb_get_file_descriptor(server()), .events = POLLIN, .revents = 0};
        const int ready = poll(&file, 1, static_cast<int>(deadline.remainingTime()));
        if (ready == 0 || (ready < 0 && errno != EINTR)) {
            return false;
        }
    }
    return false;
}

std::optional<PixelPoint> Probe::place()
{
    if (m_window == XCB_NONE) {
        return std::nullopt;
    }
    xcb_map_window(server(), m_window);
    xcb_flush(server());
    if (!waitUntilPlaced(QDeadlineTimer(patience, Qt::PreciseTimer))) {
        return std::nullopt;
    }
    const auto asked = xcb_translate_coordinates(server(), m_window, m_screen->root, 0, 0);
    const Owned<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(server(), asked, nullptr));
    return reply ? std::optional(PixelPoint{reply->dst_x, reply->dst_y}) : std::nullopt;
}

} // namespace

std::optional<PixelPoint> placeOfNewWindow()
{
    return connection() != nullptr ? Probe().place() : std::nullopt;
}

} // namespace corvane::x11
