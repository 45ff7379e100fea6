// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingPlatform.h"

#include <QString>

namespace corvane {

/// What remains of an event's title as the student's name: without platforms, codes and the words that
/// booking platforms put about it; "Student" when nothing does. Linear in the length of `title`.
[[nodiscard]] QString studentName(const QString &title, TeachingPlatform platform);

/// Whether `scalar` is an accent or another mark on the character before it.
[[nodiscard]] bool isMark(char32_t scalar);

} // namespace corvane
