// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

const QByteArray heading = "quillet pending requests 1";
const QByteArray ending = "end ";

// A longer file is not one of ours: it is read up to here.
constexpr qint64 maximumFileSize = qint64{64} * 1024 * 1024;

constexpr qsizetype checksumLength = 16;

// So many places of a line that holds more than an entry are looked at; see entryInside().
constexpr int maximumPlaces = 16;

// In a checksum's place it says that the entry is not pending any more. No checksum looks like it.
const QByteArray invalidChecksum(checksumLength, '-');

QByteArray checksum(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(checksumLength);
}

QByteArray encoded(const PendingRequest &request)
{
    QJsonArray list{request.identifier,         request.title,    request.body,
                    request.categoryIdentifier, request.fireDate, request.expirationDate};
    // Only where it says something: an older agent can read the others.
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

// Where in a line that begins with something else an entry starts, which goes to the line's end; or -1.
// Each place costs a reading of the rest of the line: only what looks like an entry is looked at, and no more
// of it than a line ever holds unless somebody made it up.
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

// A file descriptor that is closed with its scope.
class Descriptor {
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

bool writeAll(int descriptor, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += count > 0 ? count : 0;
    }
    return true;
}

// What a file gives, up to the longest; false, and errno, when it gives nothing for now.
bool readAll(int descriptor, QByteArray &text)
{
    constexpr qsizetype step = qsizetype{64} * 1024;
    while (text.size() < maximumFileSize) {
        const qsizetype done = text.size();
        text.resize(done + step);
        const ssize_t count = ::read(descriptor, text.data() + done, static_cast<std::size_t>(step));
        text.resize(done + std::max<ssize_t>(count, 0));
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return false;
        }
    }
    return true;
}

// Whether what failed so will fail for ever, since there is something else in the file's place.
bool isNoFile(int error)
{
    return error == EISDIR || error == ELOOP || error == ENOTDIR;
}

// A new name for a file is on the disk only when its folder is. Some file systems cannot be told to.
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
    // A relative path in this variable is to be ignored.
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString folder = QDir::isAbsolutePath(state) ? state : QDir::homePath() + u"/.local/state"_s;
    return folder + u"/quillet/pending-notifications"_s;
}

bool RequestFile::isEmpty() const
{
    const Descriptor file(::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
        return errno == ENOENT;
    }
    QByteArray text;
    return readAll(file.get(), text) && decodedRequests(text).requests.empty();
}

RequestFile::Content RequestFile::read()
{
    Content content;
    const Descriptor file(::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC));
    QByteArray text;
    if (!file.isOpen() || !readAll(file.get(), text)) {
        if (errno != ENOENT) {
            content.isReadable = isNoFile(errno);
            content.remarks = {u"cannot be read: "_s + systemError()};
            if (content.isReadable) {
                content.remarks.append(setAside());
            }
        }
        return content;
    }
    const DecodedRequests decoded = decodedRequests(text);
    for (const PendingRequest &request : decoded.requests) {
        content.queue.add(request);
    }
    m_offsets = decoded.offsets;
    if (!decoded.isWhole) {
        content.remarks = {u"is damaged: whole_entries=%1 unreadable_lines=%2"_s.arg(decoded.requests.size())
                               .arg(decoded.unreadableLines),
                           setAside()};
    }
    if (encodedRequests(content.queue) != text) {
        // Also what was invalidated goes.
        if (const auto written = write(content.queue); !written) {
            content.remarks.append(written.error());
        }
    }
    return content;
}

QString RequestFile::setAside() const
{
    const QString aside = m_path + u".unreadable"_s;
    const QByteArray from = QFile::encodeName(m_path);
    const QByteArray to = QFile::encodeName(aside);
    ::unlink(to.constData());
    // A second name for the same bytes: nothing is lost should the agent die between this and the next write.
    if (::link(from.constData(), to.constData()) == 0 || QFile::copy(m_path, aside) ||
        ::rename(from.constData(), to.constData()) == 0) {
        return u"is kept aside as \"%1\""_s.arg(aside);
    }
    return u"cannot be kept aside: "_s + systemError();
}

std::expected<void, QString> RequestFile::write(const RequestQueue &queue)
{
    QDir().mkpath(QFileInfo(m_path).path());
    QMultiHash<QString, qint64> offsets;
    const QByteArray text = encodedRequests(queue, &offsets);
    const QByteArray fresh = QFile::encodeName(m_path + u".new"_s);
    {
        const Descriptor file(
            ::open(fresh.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file.isOpen()) {
            return std::unexpected(u"cannot be written: "_s + systemError());
        }
        if (!writeAll(file.get(), text) || ::fsync(file.get()) != 0) {
            const QString error = systemError();
            ::unlink(fresh.constData());
            return std::unexpected(u"cannot be written: "_s + error);
        }
    }
    if (::rename(fresh.constData(), QFile::encodeName(m_path).constData()) != 0) {
        const QString error = systemError();
        ::unlink(fresh.constData());
        return std::unexpected(u"cannot be replaced: "_s + error);
    }
    m_offsets = offsets;
    if (!flushFolder(m_path)) {
        // The file is the new one, whoever reads it; only a power failure might still bring the former back.
        m_log(u"queue file's folder cannot be flushed: "_s + systemError());
    }
    return {};
}

std::expected<void, QString> RequestFile::invalidate(const QStringList &identifiers)
{
    const Descriptor file(::open(QFile::encodeName(m_path).constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isOpen()) {
        return std::unexpected(u"cannot be opened: "_s + systemError());
    }
    for (const QString &identifier : identifiers) {
        const QList<qint64> offsets = m_offsets.values(identifier);
        if (offsets.isEmpty()) {
            return std::unexpected(u"holds the request at an unknown place"_s);
        }
        for (const qint64 offset : offsets) {
            // Any byte of the checksum that changes makes the entry unreadable, so that this is never half
            // done.
            if (::pwrite(file.get(), invalidChecksum.constData(), checksumLength, offset) != checksumLength) {
                return std::unexpected(u"cannot be changed: "_s + systemError());
            }
        }
    }
    if (::fdatasync(file.get()) != 0) {
        return std::unexpected(u"cannot be flushed: "_s + systemError());
    }
    return {};
}

} // namespace corvane
