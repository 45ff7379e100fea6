// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemNotificationScheduler.h"
#include "Corvane/Notifications/TeachingNotificationPresenting.h"
#include "Corvane/Services/LessonScheduleProviding.h"
#include "Corvane/Services/LessonWorkflowEngine.h"
#include "Corvane/Services/WorkflowScheduling.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Utilities/DateProviding.h"
#include "Corvane/Utilities/DebugLogService.h"

namespace corvane {

struct LiveServices;

/// The long-lived services, all borrowed; copyable. Their owner keeps them until the event loop has ended.
struct AppEnvironment {
    LessonScheduleProviding &scheduleStore;
    LessonWorkflowEngine workflowEngine;
    TeachingNotificationPresenting &notificationPresenter;
    WorkflowScheduling &scheduler;
    SystemNotificationScheduler &systemNotificationScheduler;
    /// Unused: each service got the clock when it was built, and the view model asks currentDate().
    const DateProviding &dateProvider;
    DebugLogService &debugLogger;
    AppSettings &settings;

    /// Builds the running program's services into `services`, which owns them. Requests no permission and
    /// reads no calendar. Main thread; called once, by the program's entry point.
    [[nodiscard]] static AppEnvironment live(LiveServices &services);
};

} // namespace corvane
