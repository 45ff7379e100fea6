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

/// The application's one diagnostic log: a file of time-stamped lines, and the latest of them in memory.
///
/// Main thread only. Each line costs one short local write; the file is opened and closed for it, so that it
/// may be moved away while the program runs. Logging never fails towards its caller. Only the user can read
/// the file; what is no regular file in its place is left alone.
class DebugLogService : public QObject {
    Q_OBJECT

public:
    /// How many lines `latestLines` holds at most.
    static constexpr int maximumVisibleLines = 80;

    /// Makes the folder "Logs/Quillet" inside `libraryDirectory`; an empty one stands for the temporary
    /// directory. A folder that cannot be made is ignored: lines are then kept in memory only.
    explicit DebugLogService(const QString &libraryDirectory, QObject *parent = nullptr);

    /// The user's library folder on this platform, or an empty text when the system gives none.
    [[nodiscard]] static QString userLibraryDirectory();

    /// Appends one line: `date` in ISO 8601 (UTC, milliseconds), a space, `message` unchanged.
    void log(const QString &message, Date date);

    /// The latest lines, oldest first, without line feeds at their ends.
    [[nodiscard]] const QStringList &latestLines() const { return m_latestLines; }

    /// Where the log file is, or would be.
    [[nodiscard]] QUrl logURL() const { return m_logURL; }

Q_SIGNALS:
    void latestLinesChanged();

private:
    /// Says on standard error, once, that there is something else in the log's place.
    void report(const FileError &error);

    QStringList m_latestLines;
    QUrl m_logURL;
    bool m_isFolderUnusable = false;
    bool m_isReported = false;
};

} // namespace corvane
