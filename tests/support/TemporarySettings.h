// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/SettingsStore.h"

#include <QTemporaryDir>

namespace corvane {

/// A settings store in a file of its own, gone at the end.
class TemporarySettings {
public:
    /// Where the store's file is, or would be.
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("settings.ini")); }

    [[nodiscard]] SettingsStore &store() { return m_store; }

private:
    QTemporaryDir m_folder;
    SettingsStore m_store{path()};
};

} // namespace corvane
