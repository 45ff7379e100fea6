// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace corvane {

/// What the notifications for the steps of one lesson have in common, out of such a notification's
/// identifier: "quillet.backup.", the step, a dot, the lesson's start in seconds, a dot, the student. Nothing
/// for any other identifier.
[[nodiscard]] std::optional<QString> lessonOfStep(const QString &identifier);

/// Whether `later` is of the same lesson as `step`, and of a later second.
[[nodiscard]] bool isOutdatedBy(const PendingRequest &step, const PendingRequest &later);

/// Which of `requests` say at `now` (in seconds since 1970) what a later step of the same lesson says better:
/// those that are due while a later one is due as well, and has not expired. Steps of one second stay beside
/// each other.
[[nodiscard]] QStringList outdatedSteps(const std::vector<PendingRequest> &requests, qint64 now);

} // namespace corvane
