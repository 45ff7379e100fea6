// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"

#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

const QByteArray heading = "quillet pending requests 1";
const QByteArray ending = "end ";

// A longer file is not ours.
constexpr qint64 maximumFileSize = qint64{64} * 1024 * 1024;

constexpr qsizetype checksumLength = 16;

// Candidates to try in a line that contains more than an entry; see entryInside().
constexpr int maximumPlaces = 16;

// Replaces the checksum of an entry that is no longer pending; no checksum looks like it.
const QByteArray invalidChecksum(checksumLength, '-');

QByteArray checksum(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(checksumLength);
}

QByteArray encoded(const PendingRequest &request)
{
    QJsonArray list{request.identifier,         request.title,    request.body,
                    request.categoryIdentifier, request.fireDate, request.expirationDate};
    // Only if set, so that an older agent can read all other entries.
    if (request.isQuiet) {
        list.append(true);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

std::optional<PendingRequest> decodedLine(const QByteArray &line)
{
    if (line.size() <= checksumLength || line.at(checksumLength) != ' ' ||
        checksum(line.sliced(checksumLength + 1)) != line.first(checksumLength)) {
        return std::nullopt;
    }
    const QJsonArray list = QJsonDocument::fromJson(line.sliced(checksumLength + 1)).array();
    if (list.size() != 6 && list.size() != 7) {
        return std::nullopt;
    }
    return PendingRequest{list.at(0).toString(), list.at(1).toString(),  list.at(2).toString(),
                          list.at(3).toString(), list.at(4).toInteger(), list.at(5).toInteger(),
                          list.at(6).toBool()};
}

bool isChecksum(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

// The offset of the entry at the end of a line that begins with something else, or -1. Each candidate costs a
// pass over the rest of the line, so only what looks like an entry is tried, and no more candidates than
// occur in a line that nobody forged.
qsizetype entryInside(const QByteArray &line)
{
    if (!line.endsWith(']')) {
        return -1;
    }
    int places = 0;
    for (qsizetype list = line.indexOf(" [\"", checksumLength); list >= 0 && places < maximumPlaces;
         list = line.indexOf(" [\"", list + 1)) {
        if (!isChecksum(QByteArrayView(line).sliced(list - checksumLength, checksumLength))) {
            continue;
        }
        ++places;
        if (decodedLine(line.sliced(list - checksumLength))) {
            return list - checksumLength;
        }
    }
    return -1;
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// A rename is durable only once its folder is flushed. Some file systems do not support that.
bool flushFolder(const QString &path)
{
    const Descriptor folder(
        ::open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.isOpen() && (::fsync(folder.get()) == 0 || errno == EINVAL);
}

} // namespace

QByteArray encodedRequests(const RequestQueue &queue, QMultiHash<QString, qint64> *offsets)
{
    QByteArray text = heading + '\n';
    for (const PendingRequest &request : queue.requests()) {
        if (offsets != nullptr) {
            offsets->insert(request.identifier, text.size());
        }
        const QByteArray entry = encoded(request);
        text += checksum(entry) + ' ' + entry + '\n';
    }
    return text + ending + QByteArray::number(queue.size()) + '\n';
}

DecodedRequests decodedRequests(const QByteArray &text)
{
    DecodedRequests result;
    qsizetype entries = 0;
    bool hasHeading = false;
    bool hasEnding = false;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype feed = text.indexOf('\n', start);
        const bool isComplete = feed >= 0;
        const QByteArray line = text.sliced(start, (isComplete ? feed : text.size()) - start);
        const bool isFirst = start == 0;
        const qsizetype lineStart = start;
        start += line.size() + 1;
        hasEnding = false;
        if (isFirst && line == heading && isComplete) {
            hasHeading = true;
        } else if (line == ending + QByteArray::number(entries) && isComplete) {
            hasEnding = true;
        } else if (line.startsWith(invalidChecksum + " [")) {
            ++entries;
        } else if (auto request = decodedLine(line)) {
            ++entries;
            result.offsets.insert(request->identifier, lineStart);
            result.requests.push_back(*std::move(request));
        } else {
            ++result.unreadableLines;
            if (const qsizetype tail = entryInside(line); tail > 0) {
                auto rest = *decodedLine(line.sliced(tail));
                result.offsets.insert(rest.identifier, lineStart + tail);
                result.requests.push_back(std::move(rest));
            }
        }
    }
    result.isWhole = hasHeading && hasEnding && result.unreadableLines == 0;
    return result;
}

RequestFile::RequestFile(QString path, std::function<void(const QString &)> log)
    : m_path(std::move(path))
    , m_log(std::move(log))
{
}

QString RequestFile::userPath()
{
    return userFolders::state() + u"/quillet/pending-notifications"_s;
}

bool RequestFile::isEmpty() const
{
    const auto text = readRegularFile(QFile::encodeName(m_path), maximumFileSize);
    if (!text) {
        // Anything but a file holds no requests.
        return text.error().kind != FileError::Kind::failed;
    }
    return decodedRequests(*text).requests.empty();
}

RequestFile::Content RequestFile::read()
{
    Content content;
    const auto text = readRegularFile(QFile::encodeName(m_path), maximumFileSize);
    if (!text) {
        if (text.error().kind != FileError::Kind::absent) {
            content.isReadable = text.error().kind == FileError::Kind::unusable;
            content.remarks = {u"cannot be read: "_s + text.error().reason};
            // A file that is too large is not in our format, yet may hold requests.
            const QFileInfo file(m_path);
            if (content.isReadable && file.isFile() && !file.isSymLink()) {
                content.remarks.append(setAside());
            }
        }
        return content;
    }
    const DecodedRequests decoded = decodedRequests(*text);
    for (const PendingRequest &request : decoded.requests) {
        content.queue.add(request);
    }
    m_offsets = decoded.offsets;
    if (!decoded.isWhole) {
        content.remarks = {u"is damaged: whole_entries=%1 unreadable_lines=%2"_s.arg(decoded.requests.size())
                               .arg(decoded.unreadableLines),
                           setAside()};
    }
    if (encodedRequests(content.queue) != *text) {
        // Removes invalidated entries as well.
        if (const auto written = write(content.queue); !written) {
            content.remarks.append(written.error());
        }
    }
    return content;
}

QString RequestFile::setAside() const
{
    const QString aside = m_path + u".unreadable"_s;
    // If the queue file is a link, the target is kept.
    const QByteArray from = QFile::encodeName(QFileInfo(m_path).canonicalFilePath());
    const QByteArray to = QFile::encodeName(aside);
    auto kept = removeRegularFile(to);
    // A hard link, so that nothing is lost if the agent dies before the next write; a copy where there can be
    // none, as when the target is on another file system.
    if (kept && ::link(from.constData(), to.constData()) != 0) {
        const auto text = readRegularFile(from, maximumFileSize);
        kept = text ? replaceRegularFile(to, *text) : std::unexpected(text.error());
    }
    return kept ? u"is kept aside as \"%1\""_s.arg(aside) : u"cannot be kept aside: "_s + kept.error().reason;
}

std::expected<void, QString> RequestFile::write(const RequestQueue &queue)
{
    const QByteArray path = QFile::encodeName(m_path);
    [[maybe_unused]] const auto made = makePrivateFolder(
        QFile::encodeName(QFileInfo(m_path).path())); // a missing folder makes the write fail
    QMultiHash<QString, qint64> offsets;
    if (const auto written = replaceRegularFile(path, encodedRequests(queue, &offsets)); !written) {
        return std::unexpected(u"cannot be written: "_s + written.error().reason);
    }
    m_offsets = offsets;
    if (!flushFolder(m_path)) {
        // Every reader sees the new file; only a power failure could bring the old one back.
        m_log(u"queue file's folder cannot be flushed: "_s + systemError());
    }
    return {};
}

std::expected<void, QString> RequestFile::invalidate(const QStringList &identifiers)
{
    const auto file = openRegularFile(QFile::encodeName(m_path), O_WRONLY);
    if (!file) {
        return std::unexpected(u"cannot be opened: "_s + file.error().reason);
    }
    for (const QString &identifier : identifiers) {
        const QList<qint64> offsets = m_offsets.values(identifier);
        if (offsets.isEmpty()) {
            return std::unexpected(u"holds the request at an unknown place"_s);
        }
        for (const qint64 offset : offsets) {
            // Changing any byte of the checksum makes the entry unreadable, so even a partial write
            // invalidates it.
            if (::pwrite(file->get(), invalidChecksum.constData(), checksumLength, offset) !=
                checksumLength) {
                return std::unexpected(u"cannot be changed: "_s + systemError());
            }
        }
    }
    if (::fdatasync(file->get()) != 0) {
        return std::unexpected(u"cannot be flushed: "_s + systemError());
    }
    return {};
}

} // namespace corvane
