// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

class WaylandConnection;
struct WaylandOutput;

/// The monitor that the compositor chooses for a surface that names none: the focused one, which follows the
/// pointer on sway and the active window on KWin. Found by showing a transparent pixel for a moment. Null
/// without overlays, or if the compositor does not answer. Blocks for two round trips, a few milliseconds in
/// all, at most a tenth of a second. Main thread only.
[[nodiscard]] const WaylandOutput *preferredOutput(WaylandConnection &connection);

} // namespace corvane
