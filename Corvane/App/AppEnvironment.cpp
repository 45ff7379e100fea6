// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppEnvironment.h"

#include "Corvane/App/LiveServices.h"
#include "Corvane/App/SettingsFile.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Platform/Linux/Banners/CardShape.h"
#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "Corvane/Platform/Linux/Freedesktop/AutostartLoginItem.h"
#include "Corvane/Platform/Linux/Wayland/LayerShellBannerPanels.h"
#include "Corvane/Platform/Linux/Wayland/WaylandScreens.h"
#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Views/FloatingBannerView.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QPixmapCache>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Decides once how banners are shown: by the compositor if it places surfaces above full-screen windows,
/// else through the X server, which a Wayland session provides for X11 programs.
void chooseBanners(LiveServices &services)
{
    const auto makeContent = [](const TeachingAction &action,
                                std::function<void()> onDismiss) -> std::unique_ptr<QWidget> {
        return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
    };
    const CardShape shape{.cornerRadius = look::banner::cornerRadius,
                          .shadowBlur = look::banner::shadowBlur,
                          .shadowOpacity = look::banner::shadowOpacity};
    const bool isWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    auto wayland = std::make_unique<WaylandConnection>();
    if (isWayland && wayland->open() && wayland->offersOverlays()) {
        services.wayland = std::move(wayland);
        services.bannerScreens = std::make_unique<WaylandScreens>(*services.wayland);
        services.bannerPanels = std::make_unique<LayerShellBannerPanels>(*services.wayland, makeContent,
                                                                         shape, *services.debugLogger);
        services.debugLogger->log(u"banners in the compositor's overlay layer"_s);
        return;
    }
    const bool isX11 = QGuiApplication::platformName() == "xcb"_L1;
    if (isX11 && wayland->isOpen()) {
        services.wayland = std::move(wayland);
        services.bannerScreens = std::make_unique<ToolkitScreens>(*services.wayland);
    } else {
        services.bannerScreens = std::make_unique<ToolkitScreens>();
    }
    services.bannerPanels = std::make_unique<X11BannerPanels>(makeContent, shape);
    if (isWayland) {
        services.debugLogger->log(
            isX11
                ? u"banners through XWayland"_s
                : u"banners as ordinary windows, which a full-screen one covers: this Wayland compositor has "
                  u"neither an overlay layer nor XWayland"_s);
    }
}

/// Gives back the pages of the stack that only painting needs. Main thread only: below its stack, nothing
/// else is mapped, and nothing happens to pages that it has never reached.
void giveBackStack()
{
    constexpr int inUse = 16 * 1024; // the calls from here, and signal handlers
    constexpr int deepest = 256 * 1024;
    auto *const here = static_cast<char *>(__builtin_frame_address(0));
    const auto inPage = reinterpret_cast<std::uintptr_t>(here) % static_cast<std::uintptr_t>(::getpagesize());
    ::madvise(here - inPage - inUse - deepest, deepest, MADV_DONTNEED);
}

/// Gives the memory of a banner's pictures back to the system. Otherwise the C library keeps it, almost two
/// megabytes.
void giveBackMemory()
{
    QPixmapCache::clear();
    ::malloc_trim(0);
    giveBackStack();
}

} // namespace

AppEnvironment AppEnvironment::live(LiveServices &services)
{
    // The first write drops lines of the settings file that cannot be parsed, after copying the file. The log
    // is built after the settings, so this is reported later.
    SettingsFile settingsFile;
    services.standardUserDefaults = settingsFile.open();
    services.loginItem = std::make_unique<AutostartLoginItem>(AutostartLoginItem::forThisProgram());
    services.settings = std::make_unique<AppSettings>(*services.standardUserDefaults,
                                                      *services.standardUserDefaults, *services.loginItem);
    services.debugLogger = std::make_unique<DebugLogService>(DebugLogService::userLibraryDirectory());
    settingsFile.report(*services.standardUserDefaults, *services.debugLogger);

    services.eventStore =
        makeLinuxEventStore(*services.debugLogger, defaultCalendarFolders(), defaultCalendarMemoryFolder());
    services.calendarStore = std::make_unique<EventKitLessonScheduleStore>(
        *services.eventStore, services.dateProvider, CalendarLessonParser(PlatformProfile::defaults()),
        DayCalendar::current(), *services.debugLogger);
    services.scheduleStore = std::make_unique<CombinedLessonScheduleStore>(
        *services.calendarStore, *services.settings, services.dateProvider, DayCalendar::current());

    services.sounds = std::make_unique<CanberraSounds>();
    services.soundPlayer = std::make_unique<SystemSoundPlayer>(*services.debugLogger, *services.sounds);
    services.screens = std::make_unique<ToolkitScreens>();
    chooseBanners(services);
    services.bannerPanels->setWhenGone(giveBackMemory);
    services.notificationPresenter = std::make_unique<FloatingBannerPresenter>(
        *services.soundPlayer, *services.debugLogger, *services.settings, *services.bannerScreens,
        *services.bannerPanels);
    services.scheduler = std::make_unique<WorkflowTransitionScheduler>();
    services.notificationCenter = std::make_unique<AgentNotificationCenter>(QDBusConnection::sessionBus());
    services.desktopNotifications = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
    services.systemNotificationScheduler = std::make_unique<SystemNotificationScheduler>(
        *services.notificationCenter, *services.debugLogger, names::backupPrefix);

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
