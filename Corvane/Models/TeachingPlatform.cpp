// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/TeachingPlatform.h"

using namespace Qt::StringLiterals;

namespace corvane {

QString rawValue(TeachingPlatform platform)
{
    switch (platform) {
    case TeachingPlatform::onlineLesson:
        return u"Online Lesson"_s;
    case TeachingPlatform::lingoAce:
        return u"LingoAce"_s;
    case TeachingPlatform::microsoftTeams:
        return u"Microsoft Teams"_s;
    case TeachingPlatform::zoom:
        return u"Zoom"_s;
    case TeachingPlatform::googleMeet:
        return u"Google Meet"_s;
    }
    Q_UNREACHABLE();
}

std::optional<TeachingPlatform> teachingPlatform(const QString &rawValue)
{
    for (const TeachingPlatform platform : allTeachingPlatforms) {
        if (corvane::rawValue(platform) == rawValue) {
            return platform;
        }
    }
    return std::nullopt;
}

QJsonValue encode(TeachingPlatform platform)
{
    return rawValue(platform);
}

std::expected<TeachingPlatform, Failure> decodeTeachingPlatform(const QJsonValue &value)
{
    if (value.isString()) {
        if (const auto platform = teachingPlatform(value.toString())) {
            return *platform;
        }
    }
    return std::unexpected(Failure{u"the value is not the name of a teaching platform"_s});
}

} // namespace corvane
