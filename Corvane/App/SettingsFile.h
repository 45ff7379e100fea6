// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/SettingsStore.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <memory>

namespace corvane {

/// Opens the user's settings file at the program's start. Main thread; used once.
class SettingsFile {
public:
    /// Also removes copies that earlier versions left behind.
    [[nodiscard]] std::unique_ptr<SettingsStore> open();

    /// Logs what was wrong with the file, if anything. Call it after the first write to `settings`.
    void report(const SettingsStore &settings, DebugLogService &logger) const;
};

} // namespace corvane
