// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

struct xcb_connection_t;

/// What the adapters ask the X server beside what Qt asks it, over Qt's own connection. Main thread only.
/// Each question is one round trip to the server, which is on this machine.
namespace corvane::x11 {

/// Qt's connection; none where the program does not run on X11.
[[nodiscard]] xcb_connection_t *connection();

/// The first root window; 0 without a connection. All monitors of a desktop stand on it.
[[nodiscard]] std::uint32_t rootWindow();

/// The atom of `name`; 0 when the server does not know it or there is none.
[[nodiscard]] std::uint32_t atom(const char *name);

/// The window that owns the selection `name`; 0 when none does.
[[nodiscard]] std::uint32_t selectionOwner(const char *name);

/// Whether windows that are partly transparent look so: whether a compositing manager runs.
[[nodiscard]] bool isComposited();

/// The 32-bit values of `window`'s property `name`, of at most 4096 values; empty when it has none.
[[nodiscard]] std::vector<std::uint32_t> property(std::uint32_t window, const char *name);

/// A width and a height in the server's pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
};

/// The size of the root window, all monitors together; none without a connection.
[[nodiscard]] std::optional<PixelSize> rootSize();

/// A place on the root window in the server's pixels, from its upper left corner.
struct PixelPoint {
    int x = 0;
    int y = 0;
};

/// The pixel that the pointer is on; none without a connection.
[[nodiscard]] std::optional<PixelPoint> pointer();

/// The server's own time in milliseconds, from an arbitrary moment on; none without a server.
[[nodiscard]] std::optional<std::uint32_t> serverTime();

/// Sets `window`'s property `name` to a number, or to a text in UTF-8. Nothing happens without a connection.
void setNumber(std::uint32_t window, const char *name, std::uint32_t value);
void setText(std::uint32_t window, const char *name, std::string_view utf8);

/// Adds the atoms `names` to the list that `window`'s property `name` is.
void appendAtoms(std::uint32_t window, const char *name, std::initializer_list<const char *> names);

/// Asks the window manager to give `window` the keyboard and to put it in front, for what the user did at
/// `time` by the server's clock.
void activate(std::uint32_t window, std::uint32_t time);

/// Tells the desktop that the start with this identifier is over, so that it no longer shows it as going on.
void endStartup(std::string_view identifier);

} // namespace corvane::x11
