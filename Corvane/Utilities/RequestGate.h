// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <optional>

namespace corvane {

/// Limits the rate of requests from other programs on the bus: admits the first of a burst, and another one
/// from time to time while the burst lasts. A value type.
class RequestGate {
public:
    /// A request within `pause` of the previous one belongs to its burst. `renewal` after the last admitted
    /// request, one is admitted all the same.
    explicit constexpr RequestGate(Seconds pause, Seconds renewal = Seconds{5})
        : m_pause(pause)
        , m_renewal(renewal)
    {
    }

    /// Whether to carry out a request that arrives at `now`, in uptime().
    [[nodiscard]] bool admits(Seconds now)
    {
        const bool belongs = m_last && now - *m_last < m_pause && now - m_admitted < m_renewal;
        m_last = now;
        if (!belongs) {
            m_admitted = now;
        }
        return !belongs;
    }

private:
    Seconds m_pause;
    Seconds m_renewal;
    std::optional<Seconds> m_last;
    Seconds m_admitted{};
};

} // namespace corvane
