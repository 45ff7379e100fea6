// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/WallClockAlarm.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QtGlobal>

#include <cstdint>

namespace corvane {

/// An alarm that rings when a test sets its clock.
class FakeWallClockAlarm final : public WallClockAlarm {
public:
    FakeWallClockAlarm() = default;
    ~FakeWallClockAlarm() override { ::close(m_event); }
    FakeWallClockAlarm(const FakeWallClockAlarm &) = delete;
    FakeWallClockAlarm &operator=(const FakeWallClockAlarm &) = delete;

    /// Sets the clock forward or back and rings; without a change, as when the machine wakes up.
    void set(Seconds change)
    {
        m_offset += change;
        const std::uint64_t one = 1;
        if (::write(m_event, &one, sizeof one) != sizeof one) {
            qFatal("the alarm does not ring");
        }
    }

    /// Whether arm() succeeds.
    bool isArmable = true;
    int armings = 0;

    [[nodiscard]] int descriptor() const override { return m_event; }
    bool arm() override
    {
        ++armings;
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t length = ::read(m_event, &count, sizeof count);
        return isArmable;
    }
    [[nodiscard]] Seconds offset() const override { return m_offset; }

private:
    int m_event = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    Seconds m_offset{1'000'000'000};
};

} // namespace corvane
