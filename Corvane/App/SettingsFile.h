// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DebugLogService.h"

#include <QSettings>
#include <QString>

#include <memory>

namespace corvane {

/// Opens the user's settings file such that nothing of it is lost. Main thread; used once, at start-up.
class SettingsFile {
public:
    /// The store over the user's settings file. A file that cannot be understood is copied beside it first,
    /// since the next write replaces it.
    [[nodiscard]] std::unique_ptr<QSettings> open();

    /// Says in the log what was wrong with the file, if anything; `settings` has been written to by then.
    void report(const QSettings &settings, DebugLogService &logger) const;

private:
    QString m_corruptPath;
    QString m_copyPath;
};

} // namespace corvane
