// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace corvane {

/// Chooses the toolkit's platform plugin. This happens before the toolkit starts, because the toolkit ends
/// the process when its platform cannot connect.
namespace displayChoice {

/// Whether a server accepts a connection; x11Answers() blocks until the server answers.
[[nodiscard]] bool x11Answers();
[[nodiscard]] bool waylandAnswers();

/// "xcb" if an X server answers, as in most Wayland sessions: there, windows can be placed and can stay above
/// full-screen ones. Otherwise "wayland" if a compositor answers, otherwise none. `asked` is the platform
/// that the environment asks for; a platform other than these two is returned unchanged.
[[nodiscard]] std::optional<QByteArray> platform(const QByteArray &asked,
                                                 const std::function<bool()> &hasX11 = &x11Answers,
                                                 const std::function<bool()> &hasWayland = &waylandAnswers);

} // namespace displayChoice

} // namespace corvane
