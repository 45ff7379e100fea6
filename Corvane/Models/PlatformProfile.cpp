// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/PlatformProfile.h"

namespace corvane {

const std::map<TeachingPlatform, PlatformProfile> &PlatformProfile::defaults()
{
    static const auto table = [] {
        std::map<TeachingPlatform, PlatformProfile> profiles;
        for (const TeachingPlatform platform : allTeachingPlatforms) {
            // Teams takes longest to admit a teacher, so its join phase takes the whole last minute.
            const Seconds joinEarly{platform == TeachingPlatform::microsoftTeams ? 60.0 : 30.0};
            profiles.emplace(platform, PlatformProfile{.id = QUuid::createUuid(),
                                                       .platform = platform,
                                                       .joinEarlyTime = joinEarly,
                                                       .wrapUpLeadTime = Seconds{360},
                                                       .finishUpLeadTime = Seconds{60},
                                                       .preparationLeadTime = Seconds{240}});
        }
        return profiles;
    }();
    return table;
}

} // namespace corvane
