// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Files installed with the program and read at run time: the manual, the information dictionary.
namespace corvane::resources {

/// The folders to search, in order: the data folder that the program in `programFolder` was installed with,
/// those below the desktop's `dataFolders`, and that of the build tree that the program runs from.
[[nodiscard]] QStringList folders(const QString &programFolder, const QStringList &dataFolders);

/// The folders of the running program. Needs the application object.
[[nodiscard]] QStringList folders();

/// The absolute path of the file `name` in the first of `folders` where it is readable, or none.
[[nodiscard]] std::optional<QString> find(const QStringList &folders, const QString &name);

} // namespace corvane::resources
