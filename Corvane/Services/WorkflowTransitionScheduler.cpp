// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/WorkflowTransitionScheduler.h"

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Spawn.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {

namespace {

constexpr Seconds period{1};

/// Runs the operation once. Its coroutine reads the lambda's captures, so this keeps the operation alive even
/// if another has replaced it.
QCoro::Task<void> beat(std::shared_ptr<const MainThreadOperation> operation)
{
    co_await (*operation)();
}

void requireMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (application != nullptr && QThread::currentThread() != application->thread()) {
        qFatal("the heartbeat belongs to the main thread");
    }
}

} // namespace

struct WorkflowTransitionScheduler::Timer {
    std::shared_ptr<const MainThreadOperation> operation;
};

void WorkflowTransitionScheduler::start(MainThreadOperation operation)
{
    requireMainThread();
    m_timer =
        std::make_shared<Timer>(Timer{std::make_shared<const MainThreadOperation>(std::move(operation))});
    spawn(run(m_timer));
}

QCoro::Task<void> WorkflowTransitionScheduler::run(std::weak_ptr<Timer> timer)
{
    Seconds deadline = uptime();
    for (;;) {
        co_await wait(deadline - uptime());
        requireMainThread();
        // Held for this tick only: the operation may restart or destroy the scheduler.
        const std::shared_ptr<Timer> running = timer.lock();
        if (running == nullptr) {
            co_return;
        }
        spawn(beat(running->operation));
        const double missed = std::floor((uptime() - deadline) / period);
        deadline += period * (std::max(missed, 0.0) + 1);
    }
}

} // namespace corvane
