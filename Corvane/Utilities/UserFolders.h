// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// The user's base directories. A relative path in one of their variables is ignored, because it would mean a
/// different folder in each program.
namespace corvane::userFolders {

[[nodiscard]] QString config(); ///< $XDG_CONFIG_HOME
[[nodiscard]] QString state();  ///< $XDG_STATE_HOME
[[nodiscard]] QString data();   ///< $XDG_DATA_HOME

[[nodiscard]] QStringList machineConfig(); ///< $XDG_CONFIG_DIRS, most important first
[[nodiscard]] QStringList machineData();   ///< $XDG_DATA_DIRS, likewise

} // namespace corvane::userFolders
