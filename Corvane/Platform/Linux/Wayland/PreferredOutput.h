// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

class WaylandConnection;
struct WaylandOutput;

/// The monitor that the compositor chooses for a surface that names none: the focused one, which follows the
/// pointer on sway and KWin 6. Found by showing a transparent pixel for a moment. Null without overlays, or
/// if the compositor does not tell. Blocks for some milliseconds, a quarter of a second if the compositor is
/// busy, and delivers the connection's events meanwhile. Main thread only.
[[nodiscard]] const WaylandOutput *preferredOutput(WaylandConnection &connection);

} // namespace corvane
