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

/// The video platform of a lesson. `onlineLesson` stands for any platform not listed.
enum class TeachingPlatform { onlineLesson, lingoAce, microsoftTeams, zoom, googleMeet };

/// All platforms in declaration order, which pickers use too.
inline constexpr std::array allTeachingPlatforms{TeachingPlatform::onlineLesson, TeachingPlatform::lingoAce,
                                                 TeachingPlatform::microsoftTeams, TeachingPlatform::zoom,
                                                 TeachingPlatform::googleMeet};

/// The stored form, which is also the name that the teacher sees: "Microsoft Teams".
[[nodiscard]] QString rawValue(TeachingPlatform platform);

/// The platform's identity in lists: its raw value.
[[nodiscard]] inline QString id(TeachingPlatform platform)
{
    return rawValue(platform);
}

/// The platform with exactly this raw value, or none.
[[nodiscard]] std::optional<TeachingPlatform> teachingPlatform(const QString &rawValue);

[[nodiscard]] QJsonValue encode(TeachingPlatform platform);

/// Fails for anything but a string with a known name.
[[nodiscard]] std::expected<TeachingPlatform, Failure> decodeTeachingPlatform(const QJsonValue &value);

} // namespace corvane
