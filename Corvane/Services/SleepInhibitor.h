// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// Keeps the machine from falling asleep by itself. Main thread only; used by the sleep guard.
///
/// Only automatic sleep is meant: the screen may blank meanwhile, and a teacher who suspends the machine or
/// closes its lid is obeyed. Both calls return at once, do nothing when they are repeated, and never fail
/// towards the caller: without a service for it, the first one that appears is asked. The end of the
/// inhibitor, and of the program, lets the machine sleep again.
class SleepInhibitor {
public:
    virtual ~SleepInhibitor() = default;

    virtual void keepAwake() = 0;
    virtual void letSleep() = 0;
};

} // namespace corvane
