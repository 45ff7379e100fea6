// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/SettingsStore.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <memory>

namespace corvane {

/// The user's settings file at the program's start. Main thread; used once.
class SettingsFile {
public:
    /// The store over the user's settings file.
    [[nodiscard]] std::unique_ptr<SettingsStore> open();

    /// Says in the log what was wrong with the file, if anything; `settings` has been written to by then.
    void report(const SettingsStore &settings, DebugLogService &logger) const;
};

} // namespace corvane
