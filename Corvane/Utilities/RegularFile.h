// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <expected>

/// The files of the program and its agent. These calls wait for nothing but the disk: anything but a regular
/// file (a pipe, a device, a folder) is neither opened nor changed. A symbolic link is followed only to a
/// regular file of the user; replacing that file keeps the link.
namespace corvane {

/// Why a file operation failed.
struct FileError {
    enum class Kind {
        absent,   ///< nothing is there
        unusable, ///< something else is there and is left alone; permanent
        failed,   ///< the system failed this time
    };
    Kind kind = Kind::failed;
    QString reason; ///< for the log

    /// For the current errno.
    [[nodiscard]] static FileError system();
};

/// Where a symbolic link may lead: to a file of the user only, or to any file.
enum class LinkTo { ownFile, anyFile };

/// Opens the file at `path` with `access`: O_RDONLY, O_WRONLY or O_RDWR. Never creates one.
[[nodiscard]] std::expected<Descriptor, FileError> openRegularFile(const QByteArray &path, int access,
                                                                   LinkTo links = LinkTo::ownFile);

/// The contents of the file at `path`. A file of more than `maximumSize` bytes is unusable.
[[nodiscard]] std::expected<QByteArray, FileError> readRegularFile(const QByteArray &path, qint64 maximumSize,
                                                                   LinkTo links = LinkTo::ownFile);

/// Replaces or creates the file at `path` with these bytes, readable only by the user. Atomic and durable:
/// either all of it is on the disk, or the old file stays. An interrupted call leaves a file whose name ends
/// in ".new"; the next call replaces it.
std::expected<void, FileError> replaceRegularFile(const QByteArray &path, const QByteArray &bytes);

/// Appends the bytes to the file at `path`, creating it if it is absent. Only the user can read it from then
/// on; a file of another user is unusable.
std::expected<void, FileError> appendToRegularFile(const QByteArray &path, const QByteArray &bytes);

/// Removes the file or link. Succeeds if nothing is there.
std::expected<void, FileError> removeRegularFile(const QByteArray &path);

/// Removes the permissions of others from the file at `path`, if it belongs to the user.
void makeFilePrivate(const QByteArray &path);

/// Creates the folder and its missing parents, accessible only to the user.
std::expected<void, FileError> makeFolder(const QByteArray &path);

/// Creates a folder for the program's files alone. Makes the folder, even an existing one, and the files in
/// it accessible only to the user. A folder of another user is unusable.
std::expected<void, FileError> makePrivateFolder(const QByteArray &path);

} // namespace corvane
