// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

namespace corvane {

/// Identifies a state of a file, even if another file of the same size and time replaces it.
struct FileStamp {
    qint64 size = 0;
    /// Of the contents (mtime) and of the entry (ctime); in seconds and nanoseconds.
    qint64 modified = 0;
    qint64 modifiedNanoseconds = 0;
    qint64 changed = 0;
    qint64 changedNanoseconds = 0;
    quint64 inode = 0;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

/// The calendar files of some folders.
struct FolderListing {
    bool isAnyFolderThere = false;
    std::map<QByteArray, FileStamp> files;
    /// Folders and files that cannot be read, and why: what they contain is unknown.
    std::map<QByteArray, QString> errors;

    /// Whether it is unknown if the file at `path` exists.
    [[nodiscard]] bool isUnknown(const QByteArray &path) const;
};

/// Whether one of `folders` exists; an unreadable one does.
[[nodiscard]] bool isAnyFolderThere(const std::vector<QByteArray> &folders);

/// The files that end in ".ics", in upper or lower case, in `folders` and their subfolders. Hidden files and
/// folders are left out: version control and synchronisation keep earlier states there. Links are followed;
/// each folder is read once. Blocks as long as the disk does: for a worker thread.
[[nodiscard]] FolderListing listFolders(const std::vector<QByteArray> &folders);

} // namespace corvane
