// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

#include <QLocale>
#include <QString>

namespace corvane {

/// What the bell tells besides its title, in its tool tip and to a screen reader: title and notice together
/// name the lesson, its state and a time. `gaps` is what the calendars lack, which comes last. Empty where
/// there is neither a lesson nor a gap.
[[nodiscard]] QString bellNotice(const TeachingAction &action, const QString &gaps, const QLocale &locale);

} // namespace corvane
