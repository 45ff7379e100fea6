// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <functional>

namespace corvane {

/// Something that runs on the main thread and may suspend.
using MainThreadOperation = std::function<QCoro::Task<void>()>;

/// The heartbeat as the rest of the system sees it. Main thread only.
class WorkflowScheduling {
public:
    virtual ~WorkflowScheduling() = default;

    /// Runs `operation` at once and then once a second, in place of any earlier operation. Returns
    /// immediately.
    virtual void start(MainThreadOperation operation) = 0;
};

} // namespace corvane
