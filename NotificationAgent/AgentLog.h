// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// The agent's diagnostic log: time-stamped lines on standard error and in a file of limited size that only
/// the user can read. Main thread only; reports no errors to the caller.
class AgentLog {
public:
    /// In bytes. A larger file is set aside, replacing the one set aside before.
    static constexpr qint64 maximumFileSize = qint64{256} * 1024;

    /// Creates the folder of the file `path`. With an empty path, logs to standard error only.
    explicit AgentLog(QString path);

    /// In the folder of the program's own log.
    [[nodiscard]] static QString userPath();

    /// Writes one line: the current time in ISO 8601 (UTC, milliseconds), a space, and `message` as
    /// plainText() returns it.
    void log(const QString &message) const;

private:
    QString m_path;
    mutable bool m_isReported = false; ///< whether an unusable log file was reported
};

/// An untrusted text for a log line: in quotes, and cut if it is long.
[[nodiscard]] QString quotedForLog(const QString &text);

} // namespace corvane
