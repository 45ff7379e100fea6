// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QPointer>
#include <QString>

namespace corvane {

/// Writes lines to the log that the calendar adapters borrow, as long as it exists.
class CalendarLog {
public:
    explicit CalendarLog(DebugLogService &service) : m_service(&service) {}
    void operator()(const QString &message) const
    {
        if (m_service != nullptr) {
            m_service->log(message);
        }
    }

private:
    QPointer<DebugLogService> m_service;
};

} // namespace corvane
