// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/WorkflowScheduling.h"

#include <memory>

namespace corvane {

/// The heartbeat: one timer, which fires once a second for as long as the scheduler lives.
///
/// A tick does not wait for the operation of the previous tick. The timer uses a monotonic clock, so setting
/// the wall clock does not affect it; ticks missed while the process was stopped are skipped.
class WorkflowTransitionScheduler final : public WorkflowScheduling {
public:
    void start(MainThreadOperation operation) override;

private:
    struct Timer;

    static QCoro::Task<void> run(std::weak_ptr<Timer> timer);

    /// Null before the first start; the loop ends when its timer is gone.
    std::shared_ptr<Timer> m_timer;
};

} // namespace corvane
