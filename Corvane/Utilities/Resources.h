// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The files that are installed with the program to be read while it runs: the manual, the information
/// dictionary.
namespace corvane::resources {

/// The folders that they are sought in, the first one first: the data folder that the program in
/// `programFolder` was installed with, those below the desktop's `dataFolders`, and that of the build tree
/// that the program runs from.
[[nodiscard]] QStringList folders(const QString &programFolder, const QStringList &dataFolders);

/// The same for the running program. Needs the application object.
[[nodiscard]] QStringList folders();

/// The whole path of the file `name` in the first of `folders` that has it and lets it be read, or none.
[[nodiscard]] std::optional<QString> find(const QStringList &folders, const QString &name);

} // namespace corvane::resources
