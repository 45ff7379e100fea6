// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QString>

#include <array>

namespace corvane {

/// The five notifications of `lesson`, in the order of its changeovers: prepare, one minute, join, start,
/// finish. The first four expire at the lesson's start, the last at its end.
///
/// Each identifier consists of `identifierPrefix`, a word for the changeover, the start in whole seconds
/// since 1970 UTC and the student's name, joined by dots after the prefix. A reloaded lesson keeps its
/// identifiers; a moved one gets new ones.
///
/// A start whose whole seconds do not fit into 64 bits is a programming error and aborts the process.
[[nodiscard]] std::array<NotificationRequest, 5> backupNotifications(const Lesson &lesson,
                                                                     const QString &identifierPrefix);

} // namespace corvane
