// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/ManualLessonEntry.h"
#include "tests/fuzz/FuzzTarget.h"

#include <limits>

using namespace corvane;

namespace {

/// Manually entered lessons in the format of the settings.
void run(const QByteArray &input)
{
    const auto entries = decodeManualLessons(input);
    if (!entries) {
        return;
    }
    for (const ManualLessonEntry &entry : *entries) {
        // By design, a longer one ends the program.
        if (std::abs(entry.durationMinutes / 60) < std::numeric_limits<qint64>::max() / 3600) {
            (void)entry.makeLesson(PlatformProfile::defaults());
        }
    }
    const auto data = encode(*entries);
    if (data) {
        const auto again = decodeManualLessons(*data);
        fuzz::require(again.has_value() && *again == *entries, "what is stored is read again");
    }
}

QUILLET_FUZZ_TARGET("ManualLessons", run);

} // namespace
