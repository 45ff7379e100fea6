// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/SettingsStore.h"

#include <QTemporaryDir>

namespace corvane {

/// A settings store in a temporary file, which is removed with the object.
class TemporarySettings {
public:
    /// The path of the store's file, which may not exist yet.
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("settings.ini")); }

    [[nodiscard]] SettingsStore &store() { return m_store; }

private:
    QTemporaryDir m_folder;
    SettingsStore m_store{path()};
};

} // namespace corvane
