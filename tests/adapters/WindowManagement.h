// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <QTest>
#include <QWindow>

#include <xcb/xcb.h>

namespace corvane {

/// Whether a window manager says on the display that it is there.
[[nodiscard]] inline bool isManaged()
{
    // The property outlives a manager that was killed; the window it names does not.
    const auto window = x11::property(x11::rootWindow(), "_NET_SUPPORTING_WM_CHECK");
    return !window.empty() && x11::property(window.front(), "_NET_SUPPORTING_WM_CHECK") == window;
}

/// Waits for the window manager that was just started; whether it answers requests within ten seconds. Saying
/// that it is there is not enough: until it has looked over what stood on the display before it, one loses a
/// new window's wish to be shown, or takes it for an old window and gives it no keyboard.
[[nodiscard]] inline bool isManagerServing()
{
    constexpr int timeout = 10'000; // milliseconds
    QWindow probe;
    probe.create();
    const auto id = static_cast<std::uint32_t>(probe.winId());
    // What is asked too early is lost, so it is asked again.
    return QTest::qWaitFor(
        [id] {
            if (isManaged() && x11::property(id, "_NET_FRAME_EXTENTS").empty()) {
                xcb_client_message_event_t request{};
                request.response_type = XCB_CLIENT_MESSAGE;
                request.format = 32;
                request.window = id;
                request.type = x11::atom("_NET_REQUEST_FRAME_EXTENTS");
                xcb_send_event(x11::connection(), 0, x11::rootWindow(),
                               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                               reinterpret_cast<const char *>(&request));
            }
            return !x11::property(id, "_NET_FRAME_EXTENTS").empty();
        },
        timeout);
}

} // namespace corvane
