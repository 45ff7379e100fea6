// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace corvane {

/// Which of the toolkit's platforms the program shows itself through. It is chosen before the toolkit starts,
/// which would end the process where the one that it takes leads nowhere.
namespace displayChoice {

/// Whether somebody is there; each answers at once, or when the server does.
[[nodiscard]] bool x11Answers();
[[nodiscard]] bool waylandAnswers();

/// The X server where one answers, which most Wayland sessions have: there windows can be placed, and stand
/// above a full-screen one. Else the compositor, else none. `asked` is what the environment wants: a platform
/// that is neither of the two is taken as it is.
[[nodiscard]] std::optional<QByteArray> platform(const QByteArray &asked,
                                                 const std::function<bool()> &hasX11 = &x11Answers,
                                                 const std::function<bool()> &hasWayland = &waylandAnswers);

} // namespace displayChoice

} // namespace corvane
