// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/WorkflowScheduling.h"

#include <memory>

namespace corvane {

/// The heartbeat: one timer, once a second, for as long as the scheduler lives.
///
/// A tick does not wait for the operation of the tick before it. The timer follows a clock that is never set,
/// so a change of the wall clock neither stops nor hurries it; ticks that a stopped process missed are not
/// made up.
class WorkflowTransitionScheduler final : public WorkflowScheduling {
public:
    void start(MainThreadOperation operation) override;

private:
    struct Timer;

    static QCoro::Task<void> run(std::weak_ptr<Timer> timer);

    /// None before the first start; the loop ends when it finds its timer gone.
    std::shared_ptr<Timer> m_timer;
};

} // namespace corvane
