// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// What tells that the wall clock may have been set. Main thread only; no call blocks.
class WallClockAlarm {
public:
    virtual ~WallClockAlarm() = default;

    /// What becomes readable when the clock may have been set, as long as the alarm lives; negative where
    /// there is none.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Takes note of what was told, so that the next time is told as well; false when that cannot be.
    virtual bool arm() = 0;

    /// By how much the wall clock is ahead of the time since the machine's start, sleep included. It changes
    /// only when the clock is set: what slows one down or hurries it does so to both.
    [[nodiscard]] virtual Seconds offset() const = 0;
};

/// The kernel's alarm.
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
