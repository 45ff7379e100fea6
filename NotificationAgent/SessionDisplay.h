// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>

namespace corvane {

/// Where the windows of a session are shown, as its programs' environment tells it; what is empty is not set
/// there.
struct SessionDisplay {
    QString display;        ///< of an X server: DISPLAY
    QString waylandDisplay; ///< of a compositor: WAYLAND_DISPLAY
    QString authority;      ///< of the X server: XAUTHORITY

    /// Whether the X server or the compositor accepts a connection right now. One on another machine counts
    /// as gone, since to ask it would take time. `runtimeFolder` is where compositors listen.
    [[nodiscard]] bool isThere(const QString &runtimeFolder) const;

    /// The variables that are set, by name.
    [[nodiscard]] QMap<QString, QString> environment() const;

    friend bool operator==(const SessionDisplay &, const SessionDisplay &) = default;
};

} // namespace corvane
