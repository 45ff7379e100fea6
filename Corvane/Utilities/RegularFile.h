// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <expected>

/// The files that the program and its agent keep. None of these calls waits for anybody but the disk: what is
/// no regular file (a pipe, a device, a folder) is neither opened nor changed. A link is followed to a
/// regular file of the user's own, which keeps its place and its link when it is replaced, and nowhere else.
namespace corvane {

/// Why a file cannot be had.
struct FileError {
    enum class Kind {
        absent,   ///< there is nothing
        unusable, ///< there is something else, which is left alone; it will not change by itself
        failed,   ///< the system did not give it this time
    };
    Kind kind = Kind::failed;
    QString reason; ///< in words, for the log

    /// Of errno as it stands.
    [[nodiscard]] static FileError system();
};

/// Where a link may lead.
enum class LinkTo { ownFile, anyFile };

/// Opens the file at `path`; `access` is one of O_RDONLY, O_WRONLY and O_RDWR. It makes none.
[[nodiscard]] std::expected<Descriptor, FileError> openRegularFile(const QByteArray &path, int access,
                                                                   LinkTo links = LinkTo::ownFile);

/// The bytes of the file at `path`. A file of more than `maximumSize` bytes is unusable.
[[nodiscard]] std::expected<QByteArray, FileError> readRegularFile(const QByteArray &path, qint64 maximumSize,
                                                                   LinkTo links = LinkTo::ownFile);

/// Puts a file with these bytes, which only the user can read, in the place of what is at `path`: all of it,
/// on the disk, or nothing. What an interrupted call leaves has ".new" at its name's end; the next one takes
/// its place.
std::expected<void, FileError> replaceRegularFile(const QByteArray &path, const QByteArray &bytes);

/// Adds the bytes to the end of the file at `path`, or makes one. Only the user can read it from then on;
/// a file of somebody else's is unusable.
std::expected<void, FileError> appendToRegularFile(const QByteArray &path, const QByteArray &bytes);

/// Takes the file, or a link, out of its folder. What is absent is removed already.
std::expected<void, FileError> removeRegularFile(const QByteArray &path);

/// Takes from others what they may do with the file at `path`, where it is the user's own.
void makeFilePrivate(const QByteArray &path);

/// Makes the folder, and those above it, where they are missing; only the user can look into what it makes.
std::expected<void, FileError> makeFolder(const QByteArray &path);

/// Makes a folder in which there are the program's files alone. Only the user can look into it and read what
/// is in it, also where it was there before. A folder of somebody else's is unusable.
std::expected<void, FileError> makePrivateFolder(const QByteArray &path);

} // namespace corvane
