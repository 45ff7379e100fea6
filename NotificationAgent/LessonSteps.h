// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace corvane {

/// The part of the identifier that the notifications for the steps of one lesson share. Their identifiers
/// consist of names::backupPrefix, the step, a dot, the lesson's start in seconds, a dot, the student.
/// Nothing for any other identifier.
[[nodiscard]] std::optional<QString> lessonOfStep(const QString &identifier);

/// Whether `later` belongs to the same lesson as `step` and to a later second.
[[nodiscard]] bool isOutdatedBy(const PendingRequest &step, const PendingRequest &later);

/// The requests that a later step of the same lesson makes useless at `now` (seconds since 1970 UTC): those
/// that are due while a later one is also due and has not expired. Steps of the same second are kept.
[[nodiscard]] QStringList outdatedSteps(const std::vector<PendingRequest> &requests, qint64 now);

} // namespace corvane
