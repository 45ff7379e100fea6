// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <optional>

/// How much the desktop enlarges programs, read from the settings that it publishes on the X server
/// (XSETTINGS). Works before the toolkit starts, over its own connection.
namespace corvane::desktopScale {

/// The number `name` in `settings`, the value of the property _XSETTINGS_SETTINGS; none if it is missing, is
/// not a number, or the settings end before it.
[[nodiscard]] std::optional<int> number(const QByteArray &settings, const QByteArray &name);

/// Whether the toolkit has to be told the factor of `desktop` ($XDG_CURRENT_DESKTOP). Only Xfce's: it reaches
/// only programs of its own toolkit, while other desktops also raise the resolution of fonts, which this
/// program's toolkit follows.
[[nodiscard]] bool isMissingOn(const QByteArray &desktop);

/// The factor that the toolkit has to be told, 2 to 4; none if it needs no telling.
[[nodiscard]] std::optional<int> missingFactor(const QByteArray &settings);

/// The settings of the default screen; empty if nobody publishes any or no X server answers. Blocks until the
/// server answers.
[[nodiscard]] QByteArray publishedSettings();

} // namespace corvane::desktopScale
