// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarAccessError.h"

using namespace Qt::StringLiterals;

namespace corvane {

QString localizedDescription(CalendarAccessError error)
{
    switch (error) {
    case CalendarAccessError::denied:
        return u"Calendar access is required to read today's lessons."_s;
    }
    Q_UNREACHABLE();
}

} // namespace corvane
