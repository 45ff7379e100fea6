// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarMemory.h"

#include "Corvane/Utilities/RegularFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr QByteArrayView version = "quillet calendar memory 1\n";
constexpr qsizetype checksumLength = 64; // hexadecimal digits
/// What precedes the text: names of any length. In bytes.
constexpr qint64 maximumHeaderSize = 100'000;
/// Every remembered span has ended this long after its calendar was read.
constexpr Seconds longestSpan = std::chrono::hours(10 * 24);
constexpr QLatin1StringView ending = ".memory"_L1;

QByteArray checksum(QByteArrayView bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

std::optional<RememberedCalendar> readFile(const QString &path)
{
    const auto bytes = readRegularFile(QFile::encodeName(path),
                                       CalendarMemory::maximumTextSize + maximumHeaderSize + checksumLength);
    if (!bytes) {
        return std::nullopt;
    }
    auto calendar = decodeMemory(*bytes);
    return calendar ? std::optional(std::move(*calendar)) : std::nullopt;
}

} // namespace

QByteArray encodeMemory(const RememberedCalendar &calendar)
{
    const QJsonObject header{
        {u"identifier"_s, calendar.identifier},
        {u"name"_s, calendar.name},
        {u"account"_s, calendar.account},
        {u"readAt"_s, secondsSince1970(calendar.readAt)},
        {u"from"_s, secondsSince1970(calendar.span.start)},
        {u"to"_s, secondsSince1970(calendar.span.end)},
    };
    const QByteArray body = QJsonDocument(header).toJson(QJsonDocument::Compact) + '\n' + calendar.text;
    return version.toByteArray() + checksum(body) + '\n' + body;
}

std::expected<RememberedCalendar, Failure> decodeMemory(const QByteArray &bytes)
{
    if (!bytes.startsWith(version)) {
        return std::unexpected(Failure{u"it is of another version"_s});
    }
    const QByteArray body = bytes.mid(version.size() + checksumLength + 1);
    if (bytes.mid(version.size(), checksumLength) != checksum(body)) {
        return std::unexpected(Failure{u"it is damaged"_s});
    }
    const qsizetype end = body.indexOf('\n');
    const QJsonObject header = QJsonDocument::fromJson(body.left(end)).object();
    RememberedCalendar calendar{
        .identifier = header[u"identifier"_s].toString(),
        .name = header[u"name"_s].toString(),
        .account = header[u"account"_s].toString(),
        .readAt = dateSince1970(header[u"readAt"_s].toDouble()),
        .span = {dateSince1970(header[u"from"_s].toDouble()), dateSince1970(header[u"to"_s].toDouble())},
        .text = body.mid(end + 1)};
    if (end < 0 || calendar.identifier.isEmpty()) {
        return std::unexpected(Failure{u"it is damaged"_s});
    }
    return calendar;
}

CalendarMemory::CalendarMemory(QString folder) : m_folder(std::move(folder)) {}

std::optional<RememberedCalendar> CalendarMemory::read(const QString &identifier) const
{
    auto calendar = readFile(path(identifier));
    if (calendar && calendar->identifier != identifier) {
        return std::nullopt;
    }
    return calendar;
}

std::vector<RememberedCalendar> CalendarMemory::readAll(const QString &prefix) const
{
    std::vector<RememberedCalendar> calendars;
    for (const QString &name : QDir(m_folder).entryList({u"*"_s + ending}, QDir::Files)) {
        auto calendar = readFile(m_folder + u'/' + name);
        if (calendar && calendar->identifier.startsWith(prefix)) {
            calendars.push_back(std::move(*calendar));
        }
    }
    return calendars;
}

std::expected<void, Failure> CalendarMemory::write(const RememberedCalendar &calendar) const
{
    if (calendar.text.size() > maximumTextSize) {
        // An older memory would pass for the latest answer.
        forget(calendar.identifier);
        return std::unexpected(Failure{u"it holds too much"_s});
    }
    if (const auto made = makePrivateFolder(QFile::encodeName(m_folder)); !made) {
        return std::unexpected(Failure{u"its folder cannot be made: "_s + made.error().reason});
    }
    const auto written =
        replaceRegularFile(QFile::encodeName(path(calendar.identifier)), encodeMemory(calendar));
    if (!written) {
        return std::unexpected(Failure{written.error().reason});
    }
    return {};
}

void CalendarMemory::forget(const QString &identifier) const
{
    // If this fails, the file is not ours, or the next write reports the failure.
    [[maybe_unused]] const auto removed = removeRegularFile(QFile::encodeName(path(identifier)));
}

void CalendarMemory::forgetExpired(Date now) const
{
    for (const RememberedCalendar &calendar : readAll(QString())) {
        if (calendar.readAt + longestSpan < now) {
            forget(calendar.identifier);
        }
    }
}

QString CalendarMemory::path(const QString &identifier) const
{
    // An identifier may be a path, or untrusted text of any length.
    const QByteArray hash = QCryptographicHash::hash(identifier.toUtf8(), QCryptographicHash::Sha256);
    return m_folder + u'/' + QString::fromLatin1(hash.toHex().left(32)) + ending;
}

} // namespace corvane
