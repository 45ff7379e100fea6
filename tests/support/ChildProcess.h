// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

namespace corvane {

/// Before a start: the process ends with the thread that starts it, even if that is killed. Otherwise the
/// servers of a test that is interrupted keep running, and their displays stay in use.
inline void endWithThisProcess(QProcess &process, int signal = SIGKILL)
{
    process.setChildProcessModifier([signal] { ::prctl(PR_SET_PDEATHSIG, signal); });
}

} // namespace corvane
