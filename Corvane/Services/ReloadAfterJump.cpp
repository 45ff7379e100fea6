// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ReloadAfterJump.h"

#include "Corvane/Utilities/Spawn.h"

namespace corvane {

ReloadAfterJump::ReloadAfterJump(const SystemWatcher &watcher, MenuBarViewModel &viewModel,
                                 SystemNotificationScheduler &backups, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_backups(backups)
{
    connect(&watcher, &SystemWatcher::clockWasSet, this, &ReloadAfterJump::handleClockSet);
    connect(&watcher, &SystemWatcher::woke, this, &ReloadAfterJump::handleJump);
    connect(&watcher, &SystemWatcher::networkCameBack, this, &ReloadAfterJump::handleJump);
}

void ReloadAfterJump::handleClockSet()
{
    m_backups.forgetSchedule();
    handleJump();
}

void ReloadAfterJump::handleJump()
{
    spawn(reload(this, ++m_lastJump));
}

QCoro::Task<void> ReloadAfterJump::reload(Self self, int jump)
{
    while (self != nullptr && self->m_lastJump == jump) {
        co_await self->m_viewModel.reloadLessons();
        // A failed load sets the error and returns within one turn of the event loop. (After a successful
        // load, an overlapping one may have failed; that costs one extra load.)
        if (self == nullptr || !self->m_viewModel.lastErrorMessage()) {
            co_return;
        }
        co_await wait(pause);
    }
}

} // namespace corvane
