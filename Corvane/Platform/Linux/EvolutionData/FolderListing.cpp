// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace corvane {

namespace {

/// No teacher has more files, folders or levels of folders.
constexpr std::size_t maximumFiles = 5'000;
constexpr std::size_t maximumFolders = 5'000;
constexpr int maximumLevels = 32;

FileStamp stampOf(const struct stat &status)
{
    return {.size = status.st_size,
            .modified = status.st_mtim.tv_sec,
            .modifiedNanoseconds = status.st_mtim.tv_nsec,
            .changed = status.st_ctim.tv_sec,
            .changedNanoseconds = status.st_ctim.tv_nsec,
            .inode = status.st_ino};
}

bool isIcs(const std::string &name)
{
    constexpr std::string_view ending = ".ics";
    return name.size() > ending.size() &&
           std::equal(
               ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
               [](char left, char right) { return left == std::tolower(static_cast<unsigned char>(right)); });
}

/// A circular link leads nowhere, too.
bool isNothing(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP;
}

class Lister {
public:
    FolderListing run(const std::vector<QByteArray> &folders)
    {
        for (const QByteArray &folder : folders) {
            struct stat status = {};
            if (look(folder, status) && S_ISDIR(status.st_mode)) {
                m_listing.isAnyFolderThere = true;
                read(folder, status, 0);
            } else if (m_listing.errors.contains(folder)) {
                m_listing.isAnyFolderThere = true;
            }
        }
        return std::move(m_listing);
    }

private:
    /// False if there is nothing, or nothing that can be examined.
    bool look(const QByteArray &path, struct stat &status)
    {
        if (::stat(path.constData(), &status) == 0) {
            return true;
        }
        if (!isNothing(errno)) {
            m_listing.errors.emplace(path, QString::fromLocal8Bit(std::strerror(errno)));
        }
        return false;
    }

    void read(const QByteArray &folder, const struct stat &status, int level)
    {
        // Each folder once: links may be circular.
        if (level > maximumLevels || m_seen.size() >= maximumFolders ||
            !m_seen.emplace(status.st_dev, status.st_ino).second) {
            return;
        }
        std::error_code error;
        std::filesystem::directory_iterator entry(folder.constData(), error);
        for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            const QByteArray bytes = QByteArray::fromStdString(entry->path().string());
            struct stat found = {};
            if (name.starts_with('.') || !look(bytes, found)) {
                continue;
            }
            if (S_ISDIR(found.st_mode)) {
                read(bytes, found, level + 1);
            } else if (S_ISREG(found.st_mode) && isIcs(name) && m_listing.files.size() < maximumFiles) {
                m_listing.files.emplace(bytes, stampOf(found));
            }
        }
        if (error) {
            m_listing.errors.emplace(folder, QString::fromStdString(error.message()));
        }
    }

    FolderListing m_listing;
    std::set<std::pair<dev_t, ino_t>> m_seen;
};

} // namespace

bool isAnyFolderThere(const std::vector<QByteArray> &folders)
{
    return std::ranges::any_of(folders, [](const QByteArray &folder) {
        struct stat status = {};
        return ::stat(folder.constData(), &status) == 0 ? S_ISDIR(status.st_mode) : !isNothing(errno);
    });
}

bool FolderListing::isUnknown(const QByteArray &path) const
{
    return std::ranges::any_of(errors, [&path](const auto &error) {
        return path == error.first || path.startsWith(error.first + '/');
    });
}

FolderListing listFolders(const std::vector<QByteArray> &folders)
{
    return Lister().run(folders);
}

} // namespace corvane
