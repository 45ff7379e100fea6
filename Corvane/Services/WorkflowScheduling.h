// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <functional>

namespace corvane {

/// An operation that runs on the main thread and may suspend.
using MainThreadOperation = std::function<QCoro::Task<void>()>;

/// The interface of the heartbeat. Main thread only.
class WorkflowScheduling {
public:
    virtual ~WorkflowScheduling() = default;

    /// Runs `operation` at once and then once a second, replacing any earlier operation. Returns at once.
    virtual void start(MainThreadOperation operation) = 0;
};

} // namespace corvane
