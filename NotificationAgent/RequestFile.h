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

/// The decoded contents of a queue file.
struct DecodedRequests {
    std::vector<PendingRequest> requests; ///< every intact entry, in file order
    QMultiHash<QString, qint64> offsets;  ///< where the entries of each identifier start, in bytes
    int unreadableLines = 0;
    bool isWhole = false; ///< no unreadable line, and nothing missing at the end
};

/// The file's text: a header line, a line for each request (a checksum and a JSON list), and an end line.
/// Each line can be read on its own. `offsets`, if given, receives the start of each request's line.
[[nodiscard]] QByteArray encodedRequests(const RequestQueue &queue,
                                         QMultiHash<QString, qint64> *offsets = nullptr);

/// Decodes such a text, even if it is truncated, overwritten or mixed with other data.
[[nodiscard]] DecodedRequests decodedRequests(const QByteArray &text);

/// The file that preserves pending requests beyond the end of the agent or a reboot. Every change is on the
/// disk when its call returns. Main thread only; errors are for the log.
class RequestFile {
public:
    /// `log` receives remarks that are not failures.
    explicit RequestFile(QString path, std::function<void(const QString &)> log = ignoreLog);

    /// The user's queue file, below $XDG_STATE_HOME.
    [[nodiscard]] static QString userPath();

    /// Whether the file holds no request. Changes nothing, so any process may call it. False if the file
    /// cannot be read at the moment.
    [[nodiscard]] bool isEmpty() const;

    struct Content {
        RequestQueue queue;
        QStringList remarks; ///< what was wrong, for the log; empty if nothing
        /// False if the system failed to read the file: nothing was changed, and a later start may read all
        /// of it.
        bool isReadable = true;
    };

    /// Reads the file; a missing file is an empty queue. Called once, before any write. A damaged file is
    /// kept as a copy with the suffix ".unreadable", which replaces an earlier one, and only its intact
    /// entries are used.
    [[nodiscard]] Content read();

    /// Replaces the file's contents with `queue`, completely or, on failure, not at all. A folder that cannot
    /// be flushed is only logged, because the file is already in place.
    std::expected<void, QString> write(const RequestQueue &queue);

    /// Makes the entries of these requests unreadable in place. Needs no space, so it works on a full disk,
    /// where write() fails. The requests must be in the file.
    std::expected<void, QString> invalidate(const QStringList &identifiers);

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    static void ignoreLog(const QString &) {}
    [[nodiscard]] QString setAside() const;

    QString m_path;
    std::function<void(const QString &)> m_log;
    /// Where each request's lines start in the file, in bytes.
    QMultiHash<QString, qint64> m_offsets;
};

} // namespace corvane
