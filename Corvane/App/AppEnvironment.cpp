// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppEnvironment.h"

#include "Corvane/App/LiveServices.h"
#include "Corvane/App/SettingsFile.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "Corvane/Platform/Linux/Freedesktop/AutostartLoginItem.h"
#include "Corvane/Views/FloatingBannerView.h"

#include <QDBusConnection>

using namespace Qt::StringLiterals;

namespace corvane {

AppEnvironment AppEnvironment::live(LiveServices &services)
{
    // What a garbled settings file held is put aside before the first write replaces it; the log, which tells
    // of it, is built after the settings.
    SettingsFile settingsFile;
    services.standardUserDefaults = settingsFile.open();
    services.loginItem = std::make_unique<AutostartLoginItem>(AutostartLoginItem::forThisProgram());
    services.settings = std::make_unique<AppSettings>(*services.standardUserDefaults,
                                                      *services.standardUserDefaults, *services.loginItem);
    services.debugLogger = std::make_unique<DebugLogService>(DebugLogService::userLibraryDirectory());
    settingsFile.report(*services.standardUserDefaults, *services.debugLogger);

    services.eventStore = makeLinuxEventStore(*services.debugLogger, defaultCalendarFolders());
    services.calendarStore = std::make_unique<EventKitLessonScheduleStore>(
        *services.eventStore, services.dateProvider, CalendarLessonParser(PlatformProfile::defaults()),
        DayCalendar::current(), *services.debugLogger);
    services.scheduleStore = std::make_unique<CombinedLessonScheduleStore>(
        *services.calendarStore, *services.settings, services.dateProvider, DayCalendar::current());

    services.sounds = std::make_unique<CanberraSounds>();
    services.soundPlayer = std::make_unique<SystemSoundPlayer>(*services.debugLogger, *services.sounds);
    services.screens = std::make_unique<X11Screens>();
    services.panels = std::make_unique<X11BannerPanels>(
        [](const TeachingAction &action, std::function<void()> onDismiss) -> std::unique_ptr<QWidget> {
            return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
        },
        CardShape{.cornerRadius = look::banner::cornerRadius,
                  .shadowBlur = look::banner::shadowBlur,
                  .shadowOpacity = look::banner::shadowOpacity});
    services.notificationPresenter =
        std::make_unique<FloatingBannerPresenter>(*services.soundPlayer, *services.debugLogger,
                                                  *services.settings, *services.screens, *services.panels);
    services.scheduler = std::make_unique<WorkflowTransitionScheduler>();
    services.notificationCenter = std::make_unique<AgentNotificationCenter>(QDBusConnection::sessionBus());
    services.systemNotificationScheduler = std::make_unique<SystemNotificationScheduler>(
        *services.notificationCenter, *services.debugLogger, u"quillet.backup."_s);

    return {.scheduleStore = *services.scheduleStore,
            .workflowEngine = LessonWorkflowEngine(services.dateProvider),
            .notificationPresenter = *services.notificationPresenter,
            .scheduler = *services.scheduler,
            .systemNotificationScheduler = *services.systemNotificationScheduler,
            .dateProvider = services.dateProvider,
            .debugLogger = *services.debugLogger,
            .settings = *services.settings};
}

} // namespace corvane
