// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/DisplayChoice.h"

#include <wayland-client-core.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// The toolkit's Wayland plugin is a separate package; without it the toolkit ends the process.
bool toolkitKnowsWayland()
{
    return std::ranges::any_of(QCoreApplication::libraryPaths(), [](const QString &folder) {
        return !QDir(folder + u"/platforms"_s).entryList({u"libqwayland*.so"_s}, QDir::Files).isEmpty();
    });
}

} // namespace

bool displayChoice::x11Answers()
{
    // Without DISPLAY, xcb would try the first display.
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        return false;
    }
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool displayChoice::waylandAnswers()
{
    wl_display *display = toolkitKnowsWayland() ? wl_display_connect(nullptr) : nullptr;
    if (display != nullptr) {
        wl_display_disconnect(display);
    }
    return display != nullptr;
}

std::optional<QByteArray> displayChoice::platform(const QByteArray &asked,
                                                  const std::function<bool()> &hasX11,
                                                  const std::function<bool()> &hasWayland)
{
    if (!asked.isEmpty() && !asked.startsWith("xcb") && !asked.startsWith("wayland")) {
        return asked;
    }
    // `asked` may contain options or a second choice.
    if (hasX11()) {
        return asked.startsWith("xcb") ? asked : QByteArray("xcb");
    }
    if (hasWayland()) {
        return asked.startsWith("wayland") ? asked : QByteArray("wayland");
    }
    return std::nullopt;
}

} // namespace corvane
