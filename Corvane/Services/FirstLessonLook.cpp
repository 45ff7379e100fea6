// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/FirstLessonLook.h"

#include "Corvane/Notifications/QuietNotice.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

FirstLessonLook::FirstLessonLook(const Sources &sources, QString backupPrefix, DebugLogService &logger,
                                 QObject *parent)
    : QObject(parent)
    , m_sources(sources)
    , m_backupPrefix(std::move(backupPrefix))
    , m_logger(logger)
{
    // Emitted at each heartbeat.
    connect(&sources.viewModel, &MenuBarViewModel::currentActionChanged, this, &FirstLessonLook::update);
}

QString FirstLessonLook::silentSound()
{
    return u"Silence"_s;
}

void FirstLessonLook::update()
{
    const Date now = currentDate();
    const bool hasLooked = m_lastLook && m_calendar.isInSameDay(*m_lastLook, now);
    if (!hasLooked && readiness::dueLook(m_sources.viewModel.lessons(), now)) {
        m_lastLook = now;
        spawn(look(this));
    }
}

QCoro::Task<void> FirstLessonLook::look(Self self)
{
    Readiness found = co_await examine(self);
    if (self != nullptr && !readiness::problems(found).isEmpty()) {
        co_await wait(patience);
        found = co_await examine(self);
    }
    if (self == nullptr) {
        co_return;
    }
    const QString problems = readiness::problems(found);
    if (problems.isEmpty()) {
        self->log(u"before the first lesson: all is ready"_s);
        co_return;
    }
    self->log(u"before the first lesson: missing "_s + problems);
    co_await tell(self, found);
}

QCoro::Task<Readiness> FirstLessonLook::examine(Self self)
{
    Readiness found;
    if (self == nullptr) {
        co_return found;
    }
    found.hasSound = co_await self->m_sources.sounds.play(silentSound());
    if (self == nullptr) {
        co_return found;
    }
    const auto granted = co_await self->m_sources.center.requestAuthorization();
    if (self == nullptr) {
        co_return found;
    }
    found.showsNotifications = granted && *granted;
    // If notifications are not shown, no backups were handed over; asking would only start the agent.
    if (found.showsNotifications) {
        const auto pending = co_await self->m_sources.center.pendingNotificationRequests();
        if (self == nullptr) {
            co_return found;
        }
        found.hasBackups = pending && readiness::hasBackups(self->m_sources.viewModel.lessons(), *pending,
                                                            self->m_backupPrefix, currentDate());
    }
    // The stand-in for a missing screen has no name.
    found.hasScreen = std::ranges::any_of(self->m_sources.screens.screens(),
                                          [](const Screen &screen) { return !screen.name.isEmpty(); });
    found.unansweredCalendars =
        readiness::unanswered(self->m_sources.calendars.calendars(), currentDate(), self->m_calendar);
    co_return found;
}

QCoro::Task<void> FirstLessonLook::tell(Self self, Readiness found)
{
    if (!found.showsNotifications) {
        self->log(u"before the first lesson: not reported, no service shows notifications"_s);
        co_return;
    }
    const Date now = currentDate();
    const NotificationRequest request = quietNotice(u"quillet.look"_s, u"quillet.look"_s, readiness::title(),
                                                    readiness::body(found, now, QLocale()), now);
    const auto added = co_await self->m_sources.center.add(request);
    bool isTold = added.has_value();
    if (self != nullptr && !isTold) {
        isTold = co_await self->m_sources.directNotifications.showQuietly(request.title, request.body);
    }
    if (self != nullptr) {
        self->log(isTold
                      ? u"before the first lesson: told"_s
                      : u"before the first lesson: not told error="_s + added.error().localizedDescription);
    }
}

void FirstLessonLook::log(const QString &message)
{
    m_logger.log(message);
}

} // namespace corvane
