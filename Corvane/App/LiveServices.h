// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventKitLessonScheduleStore.h"
#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Notifications/FloatingBannerPresenter.h"
#include "Corvane/Notifications/Screens.h"
#include "Corvane/Notifications/SystemNotificationScheduler.h"
#include "Corvane/Notifications/SystemSoundPlayer.h"
#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"
#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"
#include "Corvane/Platform/Linux/Freedesktop/DesktopNotifications.h"
#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Services/CombinedLessonScheduleStore.h"
#include "Corvane/Services/WorkflowTransitionScheduler.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/LoginItem.h"
#include "Corvane/Settings/SettingsStore.h"
#include "Corvane/Utilities/DateProviding.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <memory>

namespace corvane {

/// What AppEnvironment::live() builds, in the order of construction; destroyed in reverse order after the
/// event loop has ended.
struct LiveServices {
    SystemDateProvider dateProvider;
    std::unique_ptr<SettingsStore> standardUserDefaults;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<AppSettings> settings;
    std::unique_ptr<DebugLogService> debugLogger;
    std::unique_ptr<EventStore> eventStore;
    std::unique_ptr<EventKitLessonScheduleStore> calendarStore;
    std::unique_ptr<CombinedLessonScheduleStore> scheduleStore;
    std::unique_ptr<CanberraSounds> sounds;
    std::unique_ptr<SystemSoundPlayer> soundPlayer;
    std::unique_ptr<ToolkitScreens> screens;    ///< for the toolkit's windows
    std::unique_ptr<WaylandConnection> wayland; ///< only in a Wayland session
    std::unique_ptr<Screens> bannerScreens;     ///< for the banners
    std::unique_ptr<CardBannerPanels> bannerPanels;
    std::unique_ptr<FloatingBannerPresenter> notificationPresenter;
    std::unique_ptr<WorkflowTransitionScheduler> scheduler;
    std::unique_ptr<AgentNotificationCenter> notificationCenter;
    std::unique_ptr<DesktopNotifications> desktopNotifications;
    std::unique_ptr<SystemNotificationScheduler> systemNotificationScheduler;
};

} // namespace corvane
