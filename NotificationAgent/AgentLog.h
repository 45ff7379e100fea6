// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// The agent's diagnostic log: time-stamped lines on standard error and in a file that does not grow without
/// end, which only the user can read. Main thread only; logging never fails towards its caller.
class AgentLog {
public:
    /// The file is then set aside, in the place of the one set aside before. In bytes.
    static constexpr qint64 maximumFileSize = qint64{256} * 1024;

    /// `path` is the file's; its folder is made. An empty one leaves standard error alone.
    explicit AgentLog(QString path);

    /// Beside the program's own log.
    [[nodiscard]] static QString userPath();

    /// Writes one line: the present moment in ISO 8601 (UTC, milliseconds), a space, and `message`, in which
    /// control characters are replaced and those that turn the direction of the text are left out.
    void log(const QString &message) const;

private:
    QString m_path;
    mutable bool m_isReported = false; ///< that there is something else in the file's place
};

/// A text of somebody else's for a log line: in quotes, and cut when it is long.
[[nodiscard]] QString quotedForLog(const QString &text);

} // namespace corvane
