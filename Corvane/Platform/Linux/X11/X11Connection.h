// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
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

} // namespace corvane::x11
