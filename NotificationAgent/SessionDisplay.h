// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>

namespace corvane {

/// Where a session shows its windows, from its programs' environment; unset variables are empty.
struct SessionDisplay {
    QString display;        ///< DISPLAY, the X server
    QString waylandDisplay; ///< WAYLAND_DISPLAY, the compositor
    QString authority;      ///< XAUTHORITY, for the X server

    /// Whether the X server or the compositor accepts a connection right now. A server on another machine
    /// counts as gone, because asking it would take time. Compositors listen in `runtimeFolder`.
    [[nodiscard]] bool isThere(const QString &runtimeFolder) const;

    /// The variables that are set, by name.
    [[nodiscard]] QMap<QString, QString> environment() const;

    friend bool operator==(const SessionDisplay &, const SessionDisplay &) = default;
};

} // namespace corvane
