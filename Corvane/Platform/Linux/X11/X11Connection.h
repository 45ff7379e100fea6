// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

struct xcb_connection_t;

/// Requests to the X server that Qt has no interface for, over Qt's own connection. Main thread only. Each
/// query is one blocking round trip to the local server. Without a connection, commands do nothing.
namespace corvane::x11 {

/// Qt's connection; null if the program does not run on X11.
[[nodiscard]] xcb_connection_t *connection();

/// The root window of the first screen, which spans all monitors; 0 without a connection.
[[nodiscard]] std::uint32_t rootWindow();

/// The atom of `name`; 0 if the server does not know it or without a connection.
[[nodiscard]] std::uint32_t atom(const char *name);

/// The window that owns the selection `name`; 0 if there is none.
[[nodiscard]] std::uint32_t selectionOwner(const char *name);

/// Whether a compositing manager runs, so that translucent windows look translucent.
[[nodiscard]] bool isComposited();

/// The first 4096 values of `window`'s 32-bit property `name`; empty if it has no such property.
[[nodiscard]] std::vector<std::uint32_t> property(std::uint32_t window, const char *name);

/// A width and a height in the server's pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
};

/// The size of the root window (all monitors together); none without a connection.
[[nodiscard]] std::optional<PixelSize> rootSize();

/// A position on the root window in the server's pixels, from its upper left corner.
struct PixelPoint {
    int x = 0;
    int y = 0;
};

/// The pixel below the pointer; none without a connection.
[[nodiscard]] std::optional<PixelPoint> pointer();

/// The server's time in milliseconds since an arbitrary moment; none without a server.
[[nodiscard]] std::optional<std::uint32_t> serverTime();

/// The windows under the pointer, from a child of the root window down to the innermost one; empty if the
/// pointer is on the root window only.
[[nodiscard]] std::vector<std::uint32_t> windowsAtPointer();

/// The child of the root window that contains `window`: itself or, under most window managers, its frame.
[[nodiscard]] std::uint32_t topLevelOf(std::uint32_t window);

/// Sets `window`'s property `name` to a number, or to UTF-8 text.
void setNumber(std::uint32_t window, const char *name, std::uint32_t value);
void setText(std::uint32_t window, const char *name, std::string_view utf8);

/// Appends the atoms `names` to `window`'s atom list property `name`.
void appendAtoms(std::uint32_t window, const char *name, std::initializer_list<const char *> names);

/// Asks the window manager to focus and raise `window`, for a user action at `time` (server time, ms).
void activate(std::uint32_t window, std::uint32_t time);

/// Tells the desktop that the launch with this startup identifier is complete, so that it stops showing it as
/// busy.
void endStartup(std::string_view identifier);

} // namespace corvane::x11
