// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/ManualLessonEntry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto idKey = "id"_L1;
constexpr auto studentNameKey = "studentName"_L1;
constexpr auto platformKey = "platform"_L1;
constexpr auto startTimeKey = "startTime"_L1;
constexpr auto durationMinutesKey = "durationMinutes"_L1;

/// Stored dates count from 2001-01-01 00:00:00 UTC.
constexpr Date referenceDate = dateSince1970(978307200);

QString identifierText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> identifier(const QJsonValue &value)
{
    const QString text = value.toString();
    const auto id = QUuid::fromString(text);
    return identifierText(id) == text.toUpper() ? std::optional(id) : std::nullopt;
}

std::optional<qint64> integer(const QJsonValue &value)
{
    // toInteger() returns its default for anything but a whole number, so two different defaults reveal one.
    return value.toInteger(0) == value.toInteger(1) ? std::optional(value.toInteger()) : std::nullopt;
}

std::optional<ManualLessonEntry> entry(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    const auto id = identifier(object[idKey]);
    const QJsonValue name = object[studentNameKey];
    const auto platform = decodeTeachingPlatform(object[platformKey]);
    const QJsonValue start = object[startTimeKey];
    const auto minutes = integer(object[durationMinutesKey]);
    if (!id || !name.isString() || !platform || !start.isDouble() || !minutes) {
        return std::nullopt;
    }
    return ManualLessonEntry{.id = *id,
                             .studentName = name.toString(),
                             .platform = *platform,
                             .startTime = referenceDate + Seconds{start.toDouble()},
                             .durationMinutes = *minutes};
}

} // namespace

Lesson ManualLessonEntry::makeLesson(const std::map<TeachingPlatform, PlatformProfile> &profiles) const
{
    qint64 seconds = 0;
    if (__builtin_mul_overflow(durationMinutes, qint64{60}, &seconds)) {
        qFatal("the length of a manual lesson cannot be counted in seconds");
    }
    auto profile = profiles.find(platform);
    if (profile == profiles.end()) {
        profile = profiles.find(TeachingPlatform::onlineLesson);
    }
    if (profile == profiles.end()) {
        qFatal("no timing profile for a manual lesson");
    }
    return {.id = id,
            .studentName = studentName,
            .platform = platform,
            .startTime = startTime,
            .duration = Seconds{static_cast<double>(seconds)},
            .profile = profile->second};
}

std::expected<QByteArray, Failure> encode(const std::vector<ManualLessonEntry> &entries)
{
    QJsonArray array;
    for (const ManualLessonEntry &entry : entries) {
        const double start = (entry.startTime - referenceDate).count();
        if (!std::isfinite(start)) {
            return std::unexpected(Failure{u"a manual lesson's start is not a finite number"_s});
        }
        array.append(QJsonObject{{idKey, identifierText(entry.id)},
                                 {studentNameKey, entry.studentName},
                                 {platformKey, encode(entry.platform)},
                                 {startTimeKey, start},
                                 {durationMinutesKey, entry.durationMinutes}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::expected<std::vector<ManualLessonEntry>, Failure> decodeManualLessons(const QByteArray &data)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError) {
        return std::unexpected(Failure{error.errorString()});
    }
    if (!document.isArray()) {
        return std::unexpected(Failure{u"the stored lessons are not a list"_s});
    }
    std::vector<ManualLessonEntry> entries;
    for (const QJsonValue value : document.array()) {
        auto decoded = entry(value);
        if (!decoded) {
            return std::unexpected(Failure{u"a stored lesson is not whole"_s});
        }
        entries.push_back(std::move(*decoded));
    }
    return entries;
}

} // namespace corvane
