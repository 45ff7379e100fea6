// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// A window's identifier, by which it is opened, and its title.
struct WindowName {
    QString identifier;
    QString title;

    friend bool operator==(const WindowName &, const WindowName &) = default;
};

namespace windowNames {

[[nodiscard]] WindowName setup();
[[nodiscard]] WindowName help();
[[nodiscard]] WindowName about();
[[nodiscard]] WindowName settings();
[[nodiscard]] WindowName debug();

} // namespace windowNames

} // namespace corvane
