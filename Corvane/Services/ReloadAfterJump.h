// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemNotificationScheduler.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotask.h>

#include <QObject>
#include <QPointer>

namespace corvane {

/// Reloads the lessons at once after the clock was set, the machine woke or the network came back. The
/// heartbeat counts its minute on the wall clock: after the clock was set back, it would not load until that
/// minute comes again, perhaps hours later. Main thread only.
class ReloadAfterJump final : public QObject {
    Q_OBJECT

public:
    /// Borrows the objects passed in.
    ReloadAfterJump(const SystemWatcher &watcher, MenuBarViewModel &viewModel,
                    SystemNotificationScheduler &backups, QObject *parent = nullptr);

    /// After a failed load, waits this long and tries again, until a load that began after the last jump
    /// succeeds.
    static constexpr Seconds pause{1};

private:
    using Self = QPointer<ReloadAfterJump>;

    void handleClockSet();
    void handleJump();
    static QCoro::Task<void> reload(Self self, int jump);

    MenuBarViewModel &m_viewModel;
    SystemNotificationScheduler &m_backups;
    int m_lastJump = 0;
};

} // namespace corvane
