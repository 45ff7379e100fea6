// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/RegularFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr mode_t privateFile = 0600;
constexpr mode_t privateFolder = 0700;
constexpr mode_t permissions = 07777;

std::unexpected<FileError> unusable(const QString &reason)
{
    return std::unexpected(FileError{FileError::Kind::unusable, reason});
}

std::unexpected<FileError> systemFailure()
{
    return std::unexpected(FileError::system());
}

bool isOwn(const struct stat &status)
{
    return status.st_uid == ::geteuid();
}

// The place of the file that `path` names, with links resolved; `path` itself if nothing is there.
std::expected<QByteArray, FileError> placeOf(const QByteArray &path, LinkTo links)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0) {
        if (errno == ENOENT) {
            return path;
        }
        return systemFailure();
    }
    if (S_ISREG(status.st_mode)) {
        return path;
    }
    if (!S_ISLNK(status.st_mode)) {
        return unusable(u"it is no regular file"_s);
    }
    if (::stat(path.constData(), &status) != 0) {
        return unusable(u"it is a link to nothing"_s);
    }
    if (!S_ISREG(status.st_mode)) {
        return unusable(u"it is a link to no regular file"_s);
    }
    if (links == LinkTo::ownFile && !isOwn(status)) {
        return unusable(u"it is a link to somebody else's file"_s);
    }
    const std::unique_ptr<char, decltype(&::free)> target(::realpath(path.constData(), nullptr), &::free);
    if (!target) {
        return systemFailure();
    }
    return QByteArray(target.get());
}

// Opens a place that placeOf() has found. Checks it again, because it may have changed since.
std::expected<Descriptor, FileError> openPlace(const QByteArray &place, int flags, struct stat &status)
{
    // A blocking open() of a pipe would wait for the other end.
    Descriptor file(
        ::open(place.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW, privateFile));
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) {
        return systemFailure();
    }
    if (!S_ISREG(status.st_mode)) {
        return unusable(u"it is no regular file"_s);
    }
    return file;
}

// Only removes permissions; those that the owner has removed stay removed.
void makePrivate(int file, const struct stat &status, mode_t mode)
{
    if (isOwn(status) && (status.st_mode & permissions & ~mode) != 0) {
        (void)::fchmod(file, status.st_mode & mode);
    }
}

bool writeAll(int file, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(file, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += std::max<ssize_t>(count, 0);
    }
    return true;
}

std::expected<void, FileError> writeNew(const QByteArray &path, const QByteArray &bytes)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) == 0 && S_ISREG(status.st_mode)) {
        ::unlink(path.constData()); // left by an interrupted call
    }
    auto file = openPlace(path, O_WRONLY | O_CREAT | O_EXCL, status);
    if (!file) {
        return std::unexpected(file.error());
    }
    // The umask may have removed permissions that the program itself needs.
    if (::fchmod(file->get(), privateFile) != 0 || !writeAll(file->get(), bytes) ||
        ::fsync(file->get()) != 0) {
        const auto error = systemFailure();
        ::unlink(path.constData());
        return error;
    }
    return {};
}

bool makeFolders(const QByteArray &path)
{
    if (::mkdir(path.constData(), privateFolder) == 0) {
        return ::chmod(path.constData(), privateFolder) == 0;
    }
    if (errno == EEXIST) {
        return true;
    }
    const qsizetype slash = path.lastIndexOf('/');
    if (errno != ENOENT || slash <= 0 || !makeFolders(path.first(slash))) {
        return false;
    }
    return ::mkdir(path.constData(), privateFolder) == 0 && ::chmod(path.constData(), privateFolder) == 0;
}

// Restricts files that an earlier version, or the user's editor, left readable for others.
void makeFilesPrivate(int folder)
{
    const auto close = [](DIR *entries) { ::closedir(entries); };
    // The directory stream closes the descriptor that it is given.
    const int copy = ::dup(folder);
    const std::unique_ptr<DIR, decltype(close)> entries(copy < 0 ? nullptr : ::fdopendir(copy));
    if (!entries) {
        return;
    }
    while (const dirent *entry = ::readdir(entries.get())) {
        struct stat status = {};
        if (::fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
            isOwn(status) && (status.st_mode & 0077) != 0) {
            const Descriptor file(
                ::openat(folder, entry->d_name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
            if (file.isOpen()) {
                makePrivate(file.get(), status, privateFile);
            }
        }
    }
}

} // namespace

FileError FileError::system()
{
    const int number = errno;
    const bool isElse = number == EISDIR || number == ELOOP || number == ENOTDIR || number == ENXIO;
    const Kind kind = number == ENOENT ? Kind::absent : isElse ? Kind::unusable : Kind::failed;
    return {kind, QString::fromLocal8Bit(std::strerror(number))};
}

std::expected<Descriptor, FileError> openRegularFile(const QByteArray &path, int access, LinkTo links)
{
    const auto place = placeOf(path, links);
    if (!place) {
        return std::unexpected(place.error());
    }
    struct stat status = {};
    return openPlace(*place, access, status);
}

std::expected<QByteArray, FileError> readRegularFile(const QByteArray &path, qint64 maximumSize, LinkTo links)
{
    const auto place = placeOf(path, links);
    if (!place) {
        return std::unexpected(place.error());
    }
    struct stat status = {};
    const auto file = openPlace(*place, O_RDONLY, status);
    if (!file) {
        return std::unexpected(file.error());
    }
    constexpr qint64 step = qint64{64} * 1024;
    QByteArray bytes;
    bytes.reserve(std::min<qint64>(status.st_size, maximumSize) + 1);
    while (bytes.size() <= maximumSize) {
        const qsizetype done = bytes.size();
        bytes.resize(done + std::min(step, maximumSize + 1 - done));
        const ssize_t count =
            ::read(file->get(), bytes.data() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return systemFailure();
        }
        bytes.resize(done + std::max<ssize_t>(count, 0));
        if (count == 0) {
            return bytes;
        }
    }
    return unusable(u"it is too large"_s);
}

std::expected<void, FileError> replaceRegularFile(const QByteArray &path, const QByteArray &bytes)
{
    const auto place = placeOf(path, LinkTo::ownFile);
    if (!place) {
        return std::unexpected(place.error());
    }
    const QByteArray fresh = *place + ".new";
    if (const auto written = writeNew(fresh, bytes); !written) {
        return written;
    }
    if (::rename(fresh.constData(), place->constData()) != 0) {
        const auto error = systemFailure();
        ::unlink(fresh.constData());
        return error;
    }
    return {};
}

std::expected<void, FileError> appendToRegularFile(const QByteArray &path, const QByteArray &bytes)
{
    const auto place = placeOf(path, LinkTo::ownFile);
    if (!place) {
        return std::unexpected(place.error());
    }
    struct stat status = {};
    const auto file = openPlace(*place, O_WRONLY | O_APPEND, status);
    if (!file && file.error().kind == FileError::Kind::absent) {
        return replaceRegularFile(*place, bytes);
    }
    if (!file) {
        return std::unexpected(file.error());
    }
    if (!isOwn(status)) {
        return unusable(u"it is somebody else's file"_s);
    }
    makePrivate(file->get(), status, privateFile);
    if (!writeAll(file->get(), bytes)) {
        return systemFailure();
    }
    return {};
}

std::expected<void, FileError> removeRegularFile(const QByteArray &path)
{
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0) {
        // Without the folder there is no file.
        return errno == ENOENT || errno == ENOTDIR ? std::expected<void, FileError>() : systemFailure();
    }
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        return unusable(u"it is no regular file"_s);
    }
    if (::unlink(path.constData()) != 0 && errno != ENOENT) {
        return systemFailure();
    }
    return {};
}

void makeFilePrivate(const QByteArray &path)
{
    const auto place = placeOf(path, LinkTo::ownFile);
    struct stat status = {};
    if (place) {
        if (const auto file = openPlace(*place, O_RDONLY, status)) {
            makePrivate(file->get(), status, privateFile);
        }
    }
}

std::expected<void, FileError> makeFolder(const QByteArray &path)
{
    if (!makeFolders(path)) {
        return systemFailure();
    }
    return {};
}

std::expected<void, FileError> makePrivateFolder(const QByteArray &path)
{
    if (const auto made = makeFolder(path); !made) {
        return made;
    }
    const Descriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status = {};
    if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) {
        return systemFailure();
    }
    if (!isOwn(status)) {
        return unusable(u"it is somebody else's folder"_s);
    }
    makePrivate(folder.get(), status, privateFolder);
    makeFilesPrivate(folder.get());
    return {};
}

} // namespace corvane
