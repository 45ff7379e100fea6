// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// The base directories of the desktop for this user. A relative path in one of their variables is ignored:
/// it would mean another folder in each program.
namespace corvane::userFolders {

[[nodiscard]] QString config(); ///< $XDG_CONFIG_HOME
[[nodiscard]] QString state();  ///< $XDG_STATE_HOME
[[nodiscard]] QString data();   ///< $XDG_DATA_HOME

[[nodiscard]] QStringList machineConfig(); ///< $XDG_CONFIG_DIRS, the most important first
[[nodiscard]] QStringList machineData();   ///< $XDG_DATA_DIRS, likewise

} // namespace corvane::userFolders
