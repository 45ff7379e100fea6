// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Failure.h"

#include <QJsonValue>
#include <QString>

#include <array>
#include <expected>
#include <optional>

namespace corvane {

/// The video platform of a lesson. `onlineLesson` stands for any platform that is not one of the named ones.
enum class TeachingPlatform { onlineLesson, lingoAce, microsoftTeams, zoom, googleMeet };

/// All platforms in their order of declaration, which is the order in which pickers list them.
inline constexpr std::array allTeachingPlatforms{TeachingPlatform::onlineLesson, TeachingPlatform::lingoAce,
                                                 TeachingPlatform::microsoftTeams, TeachingPlatform::zoom,
                                                 TeachingPlatform::googleMeet};

/// The stored and coded form, which is also the name shown to the teacher: "Microsoft Teams".
[[nodiscard]] QString rawValue(TeachingPlatform platform);

/// The platform's identity in lists: its raw value.
[[nodiscard]] inline QString id(TeachingPlatform platform)
{
    return rawValue(platform);
}

/// The platform with exactly this raw value, or none.
[[nodiscard]] std::optional<TeachingPlatform> teachingPlatform(const QString &rawValue);

/// The platform as a JSON string.
[[nodiscard]] QJsonValue encode(TeachingPlatform platform);

/// The platform of a JSON string; anything else, an unknown name included, is a failure.
[[nodiscard]] std::expected<TeachingPlatform, Failure> decodeTeachingPlatform(const QJsonValue &value);

} // namespace corvane
