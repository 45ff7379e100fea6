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

/// Has the lessons loaded at once when the clock was set, the machine woke or the network is back. The
/// heartbeat counts a minute on the wall clock: after one that was set back it would load nothing until that
/// minute comes again, hours later. Main thread only.
class ReloadAfterJump final : public QObject {
    Q_OBJECT

public:
    /// What is passed is borrowed.
    ReloadAfterJump(const SystemWatcher &watcher, MenuBarViewModel &viewModel,
                    SystemNotificationScheduler &backups, QObject *parent = nullptr);

    /// A load that fails is tried again so long after its end, until one that began after the last jump has
    /// succeeded.
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
