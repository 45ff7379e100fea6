// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QString>

#include <array>

namespace corvane {

/// The five notifications that lead through `lesson`, in the order of its changeovers: prepare, one minute,
/// join, start, finish. The first four help until the lesson starts, the last until it ends.
///
/// Each identifier is `identifierPrefix`, a word for the changeover, the start in whole seconds since 1970
/// and the student's name, joined by dots after the prefix: a lesson loaded again has the same ones, a moved
/// one others.
///
/// A start whose whole seconds do not fit into 64 bits is a mistake of the program, and ends it.
[[nodiscard]] std::array<NotificationRequest, 5> backupNotifications(const Lesson &lesson,
                                                                     const QString &identifierPrefix);

} // namespace corvane
