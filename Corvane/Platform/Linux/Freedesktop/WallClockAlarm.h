// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// Signals that the wall clock may have been set. Main thread only; no call blocks.
class WallClockAlarm {
public:
    virtual ~WallClockAlarm() = default;

    /// A file descriptor that becomes readable when the clock may have been set, valid as long as the alarm
    /// lives; negative if there is none.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Acknowledges an alarm and arms the next one; false if that fails.
    virtual bool arm() = 0;

    /// How far the wall clock is ahead of the time since boot, sleep included. It changes only when the clock
    /// is set: slewing affects both clocks.
    [[nodiscard]] virtual Seconds offset() const = 0;
};

/// The alarm by a kernel timer.
class KernelWallClockAlarm final : public WallClockAlarm {
public:
    KernelWallClockAlarm();
    ~KernelWallClockAlarm() override;
    KernelWallClockAlarm(const KernelWallClockAlarm &) = delete;
    KernelWallClockAlarm &operator=(const KernelWallClockAlarm &) = delete;

    [[nodiscard]] int descriptor() const override { return m_timer; }
    bool arm() override;
    [[nodiscard]] Seconds offset() const override;

private:
    int m_timer;
};

} // namespace corvane
