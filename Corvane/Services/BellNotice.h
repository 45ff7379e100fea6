// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

#include <QLocale>
#include <QString>

namespace corvane {

/// The bell's notice, for its tool tip and for screen readers: together with the title it names the lesson,
/// its state and a time. `gaps`, the text on missing calendars, comes last. Empty if there is neither a
/// lesson nor a gap. Of the moment it depends only on whether the lesson has begun.
[[nodiscard]] QString bellNotice(const TeachingAction &action, const QString &gaps, const QLocale &locale);

} // namespace corvane
