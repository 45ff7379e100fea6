// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// Prevents automatic sleep. Main thread only; used by the sleep guard.
///
/// Only automatic sleep is prevented: the screen may still blank, and the teacher can still suspend the
/// machine or close its lid. Both calls return at once, have no effect when repeated, and report no errors:
/// if there is no service for it yet, the first one that appears is asked. Destroying the inhibitor, or
/// ending the program, allows sleep again.
class SleepInhibitor {
public:
    virtual ~SleepInhibitor() = default;

    virtual void keepAwake() = 0;
    virtual void letSleep() = 0;
};

} // namespace corvane
