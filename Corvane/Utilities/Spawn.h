// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <utility>

namespace corvane {

/// Lets `task` run to its end without awaiting it. The call says that this is intended: a task that is merely
/// dropped looks like a forgotten await.
inline void spawn(QCoro::Task<void> task)
{
    // A coroutine owns itself once its task is gone.
    [[maybe_unused]] const QCoro::Task<void> released = std::move(task);
}

} // namespace corvane
