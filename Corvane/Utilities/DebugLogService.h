// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/RegularFile.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace corvane {

/// The application's only diagnostic log: a file of time-stamped lines, and the latest lines in memory.
///
/// Main thread only. Each line costs one short local write, which opens and closes the file, so that it can
/// be moved away while the program runs. Logging reports no errors to its caller. Only the user can read the
/// file; anything but a regular file in its place is left alone.
class DebugLogService : public QObject {
    Q_OBJECT

public:
    static constexpr int maximumVisibleLines = 80;

    /// Creates the folder "Logs/Quillet" in `libraryDirectory`; if that is empty, in the temporary directory.
    /// If the folder cannot be created, lines are kept in memory only.
    explicit DebugLogService(const QString &libraryDirectory, QObject *parent = nullptr);

    /// The user's library folder on this platform.
    [[nodiscard]] static QString userLibraryDirectory();

    /// Appends one line: `date` in ISO 8601 (UTC, milliseconds), a space, `message` unchanged.
    void log(const QString &message, Date date);
    /// The same with the current time.
    void log(const QString &message) { log(message, currentDate()); }

    /// The latest lines, at most maximumVisibleLines, oldest first, without line feeds at their ends.
    [[nodiscard]] const QStringList &latestLines() const { return m_latestLines; }

    /// The log file's location, even if the file does not exist.
    [[nodiscard]] QUrl logURL() const { return m_logURL; }

Q_SIGNALS:
    void latestLinesChanged();

private:
    /// Reports on standard error, once, that something other than a log file or folder is in the way.
    void report(const FileError &error);

    QStringList m_latestLines;
    QUrl m_logURL;
    bool m_isFolderUnusable = false;
    bool m_isReported = false;
};

} // namespace corvane
