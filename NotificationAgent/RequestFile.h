// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/RequestQueue.h"

#include <QByteArray>
#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <expected>
#include <functional>
#include <vector>

namespace corvane {

/// What stands in the bytes of a queue file.
struct DecodedRequests {
    std::vector<PendingRequest> requests; ///< every entry that is whole, in the file's order
    QMultiHash<QString, qint64> offsets;  ///< where the entries of each identifier start, in bytes
    int unreadableLines = 0;
    bool isWhole = false; ///< nothing is unreadable, and nothing is missing at the end
};

/// The file's text: a heading, a line for each request (a checksum and a JSON list), and a line that ends it.
/// Each line can be read without the others. `offsets`, when given, gets where each request's line starts.
[[nodiscard]] QByteArray encodedRequests(const RequestQueue &queue,
                                         QMultiHash<QString, qint64> *offsets = nullptr);

/// Reads such a text, also one that was cut off, written over or mixed with something else.
[[nodiscard]] DecodedRequests decodedRequests(const QByteArray &text);

/// The file in which the pending requests survive the agent, and the machine's end. Every change is on the
/// disk when its call returns. Main thread only; failures are told in words for the log.
class RequestFile {
public:
    /// `log` takes a line about what is no failure.
    explicit RequestFile(QString path, std::function<void(const QString &)> log = ignoreLog);

    /// The user's queue, below the folder of what programs keep between their runs ($XDG_STATE_HOME).
    [[nodiscard]] static QString userPath();

    /// Whether no request is in the file; touches nothing, so that anybody may look. A file that cannot be
    /// read is not known to be empty.
    [[nodiscard]] bool isEmpty() const;

    struct Content {
        RequestQueue queue;
        QStringList remarks; ///< what was wrong, for the log; empty when all was well
        /// False when the disk did not give the file this time: nothing was touched, and a later start may
        /// find all of it.
        bool isReadable = true;
    };

    /// Reads the file; one that does not exist is an empty queue. Called once, before anything is written.
    /// What is not whole is kept aside, under the file's name with ".unreadable" at its end, and goes no
    /// further; the next such find takes its place.
    [[nodiscard]] Content read();

    /// Puts `queue` in the place of what the file holds: all of it, or on failure nothing. A folder that
    /// cannot be flushed is no failure, since the file is in its place by then; it is logged.
    std::expected<void, QString> write(const RequestQueue &queue);

    /// Makes the entries of these requests unreadable where they stand. It needs no room, so that it also
    /// works on a full disk, where write() does not. The requests must be in the file.
    std::expected<void, QString> invalidate(const QStringList &identifiers);

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    static void ignoreLog(const QString &) {}
    [[nodiscard]] QString setAside() const;

    QString m_path;
    std::function<void(const QString &)> m_log;
    /// Where the lines of each request start in the file, in bytes.
    QMultiHash<QString, qint64> m_offsets;
};

} // namespace corvane
