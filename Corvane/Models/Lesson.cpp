// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/Lesson.h"

namespace corvane {

bool precedes(const Lesson &left, const Lesson &right)
{
    if (left.startTime != right.startTime) {
        return left.startTime < right.startTime;
    }
    if (left.studentName != right.studentName) {
        return left.studentName < right.studentName;
    }
    return left.platform != right.platform && rawValue(left.platform) < rawValue(right.platform);
}

} // namespace corvane
