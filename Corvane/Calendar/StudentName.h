// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingPlatform.h"

#include <QString>

namespace corvane {

/// The student's name: an event's title without platforms, codes and the words that booking platforms add;
/// "Student" if nothing remains. Linear in the length of `title`.
[[nodiscard]] QString studentName(const QString &title, TeachingPlatform platform);

/// Whether `scalar` is an accent or another mark on the preceding character.
[[nodiscard]] bool isMark(char32_t scalar);

} // namespace corvane
