// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/WindowPlacement.h"

#include "Corvane/Platform/Linux/X11/XcbRef.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <QDeadlineTimer>

#include <array>
#include <cerrno>
#include <cstdint>
#include <span>

namespace corvane::x11 {

namespace {

constexpr std::uint8_t bitsOfNumber = 32;
constexpr std::uint8_t depthWithAlpha = 32;
constexpr std::int16_t created = 0; // where the pixel is created, in x and y

/// A transparent pixel. It is made through the toolkit's connection, which does not use a window's number
/// again soon: a window manager that still removes the last such pixel would take the next for the same.
class Probe {
public:
    Probe();
    ~Probe();
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;

    /// Shows the pixel and returns its place on the root window.
    [[nodiscard]] std::optional<PixelPoint> place(std::chrono::milliseconds patience);

private:
    void createWindow(xcb_visualid_t visual);
    void describeWindow() const;
    [[nodiscard]] bool isListening() const;
    [[nodiscard]] bool waitUntilPlaced(QDeadlineTimer deadline) const;

    xcb_connection_t *m_server = connection();
    OwnConnection m_listener{xcb_connect(nullptr, nullptr)}; // the toolkit takes all events of its own
    xcb_colormap_t m_colours = XCB_NONE;
    xcb_window_t m_window = XCB_NONE;
};

/// A visual with alpha; none if the server has no such.
xcb_visualid_t translucentVisual(xcb_connection_t *server)
{
    auto depth = xcb_screen_allowed_depths_iterator(xcb_setup_roots_iterator(xcb_get_setup(server)).data);
    for (; depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == depthWithAlpha && depth.data->visuals_len > 0) {
            return xcb_depth_visuals_iterator(depth.data).data->visual_id;
        }
    }
    return XCB_NONE;
}

Probe::Probe()
{
    const xcb_visualid_t visual = translucentVisual(m_server);
    if (visual != XCB_NONE) {
        createWindow(visual);
        describeWindow();
    }
}

Probe::~Probe()
{
    if (m_window != XCB_NONE) {
        xcb_destroy_window(m_server, m_window);
        xcb_free_colormap(m_server, m_colours);
        xcb_flush(m_server);
    }
}

void Probe::createWindow(xcb_visualid_t visual)
{
    m_colours = xcb_generate_id(m_server);
    xcb_create_colormap(m_server, XCB_COLORMAP_ALLOC_NONE, m_colours, rootWindow(), visual);
    m_window = xcb_generate_id(m_server);
    constexpr std::uint32_t transparent = 0;
    const std::array<std::uint32_t, 3> values{transparent, transparent, m_colours};
    xcb_create_window(m_server, depthWithAlpha, m_window, rootWindow(), created, created, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values.data());
}

void Probe::describeWindow() const
{
    appendAtoms(m_window, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_SPLASH"});
    appendAtoms(m_window, "_NET_WM_STATE",
                {"_NET_WM_STATE_BELOW", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
    const auto set = [this](xcb_atom_t name, std::span<const std::uint32_t> values) {
        xcb_change_property(m_server, XCB_PROP_MODE_REPLACE, m_window, name, name, bitsOfNumber,
                            static_cast<std::uint32_t>(values.size()), values.data());
    };
    // A window that takes no input leaves the focus where it is. A user time of zero would too, but then
    // mutter keeps it clear of the focused window instead of centring it.
    constexpr std::uint32_t saysInput = 1;
    set(XCB_ATOM_WM_HINTS, std::array<std::uint32_t, 9>{saysInput, 0});
    constexpr std::uint32_t saysDecorations = 2;
    set(atom("_MOTIF_WM_HINTS"), std::array<std::uint32_t, 5>{saysDecorations, 0});
}

bool Probe::isListening() const
{
    if (m_window == XCB_NONE || xcb_connection_has_error(m_listener.get()) != 0) {
        return false;
    }
    // The server must have made the window before the other connection asks for its events.
    const Owned<xcb_get_input_focus_reply_t> made(
        xcb_get_input_focus_reply(m_server, xcb_get_input_focus(m_server), nullptr));
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto asked =
        xcb_change_window_attributes_checked(m_listener.get(), m_window, XCB_CW_EVENT_MASK, &events);
    const Owned<xcb_generic_error_t> error(xcb_request_check(m_listener.get(), asked));
    return made && !error;
}

bool Probe::waitUntilPlaced(QDeadlineTimer deadline) const
{
    constexpr std::uint8_t typeMask = 0x7f;
    bool isMapped = false;
    bool isMoved = false;
    while (xcb_connection_has_error(m_listener.get()) == 0) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_listener.get())}) {
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
        pollfd file{.fd = xcb_get_file_descriptor(m_listener.get()), .events = POLLIN, .revents = 0};
        const int ready = poll(&file, 1, static_cast<int>(deadline.remainingTime()));
        if (ready == 0 || (ready < 0 && errno != EINTR)) {
            return false;
        }
    }
    return false;
}

std::optional<PixelPoint> Probe::place(std::chrono::milliseconds patience)
{
    if (!isListening()) {
        return std::nullopt;
    }
    xcb_map_window(m_server, m_window);
    xcb_flush(m_server);
    if (!waitUntilPlaced(QDeadlineTimer(patience, Qt::PreciseTimer))) {
        return std::nullopt;
    }
    const auto asked = xcb_translate_coordinates(m_server, m_window, rootWindow(), 0, 0);
    const Owned<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(m_server, asked, nullptr));
    return reply ? std::optional(PixelPoint{reply->dst_x, reply->dst_y}) : std::nullopt;
}

} // namespace

std::optional<PixelPoint> placeOfNewWindow(std::chrono::milliseconds patience)
{
    return connection() != nullptr ? Probe().place(patience) : std::nullopt;
}

} // namespace corvane::x11
