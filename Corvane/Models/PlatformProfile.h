// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingPlatform.h"
#include "Corvane/Utilities/Clock.h"

#include <QUuid>

#include <map>

namespace corvane {

/// The timing rules of one platform.
struct PlatformProfile {
    QUuid id;
    TeachingPlatform platform = TeachingPlatform::onlineLesson;
    Seconds joinEarlyTime{};       ///< how long before the start the join phase begins
    Seconds wrapUpLeadTime{};      ///< how long before the next start an idle action's transition date lies
    Seconds finishUpLeadTime{};    ///< how long before the current lesson's end the wrap-up phase begins
    Seconds preparationLeadTime{}; ///< how long before the next start the prepare phase begins

    friend bool operator==(const PlatformProfile &, const PlatformProfile &) = default;

    /// The default profile of every platform. Built on first use; the ids are new in each run.
    [[nodiscard]] static const std::map<TeachingPlatform, PlatformProfile> &defaults();
};

} // namespace corvane
