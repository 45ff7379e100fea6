// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QString>
#include <QTest>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdint>

namespace corvane {

/// Whether a running window manager has announced itself on the display.
[[nodiscard]] inline bool isManaged()
{
    // The property outlives a manager that was killed; the window it names does not.
    const auto window = x11::property(x11::rootWindow(), "_NET_SUPPORTING_WM_CHECK");
    return !window.empty() && x11::property(window.front(), "_NET_SUPPORTING_WM_CHECK") == window;
}

/// Waits until the window manager that was just started answers requests, for at most ten seconds; returns
/// whether it does. Its announcement is not enough: until a manager has examined the windows that were there
/// before it, it may lose a new window's map request, or take the window for an old one and not give it the
/// keyboard focus.
[[nodiscard]] inline bool isManagerServing()
{
    constexpr int timeout = 10'000; // milliseconds
    QWindow probe;
    probe.create();
    const auto id = static_cast<std::uint32_t>(probe.winId());
    // A request that comes too early is lost, so repeat it.
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

/// The window with the keyboard focus, as the window manager reports it; 0 if there is none.
[[nodiscard]] inline std::uint32_t activeWindow()
{
    const auto window = x11::property(x11::rootWindow(), "_NET_ACTIVE_WINDOW");
    return window.empty() ? 0 : window.front();
}

/// Saves a screenshot for inspection if QUILLET_KEEP_PICTURES names a folder.
inline void keepPicture(const QString &name)
{
    const QString folder = qEnvironmentVariable("QUILLET_KEEP_PICTURES");
    if (!folder.isEmpty()) {
        QVERIFY(QGuiApplication::primaryScreen()->grabWindow(0).save(
            QStringLiteral("%1/%2.png").arg(folder, name)));
    }
}

} // namespace corvane
