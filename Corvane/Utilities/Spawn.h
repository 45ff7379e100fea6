// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <utility>

namespace corvane {

/// Lets `task` run on to its end with nobody waiting for it. It says at the call that this is meant: a task
/// that is merely dropped looks like one whose result was forgotten.
inline void spawn(QCoro::Task<void> task)
{
    // A task's coroutine owns itself once the handle is gone.
    [[maybe_unused]] const QCoro::Task<void> released = std::move(task);
}

} // namespace corvane
