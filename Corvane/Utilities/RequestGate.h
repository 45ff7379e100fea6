// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <optional>

namespace corvane {

/// Lets one request of a flood through, and another one from time to time while the flood lasts. Used before
/// what another program on the bus can ask for. A value.
class RequestGate {
public:
    /// A request within `pause` of the one before belongs to it. After `renewal` one counts all the same.
    explicit constexpr RequestGate(Seconds pause, Seconds renewal = Seconds{5})
        : m_pause(pause)
        , m_renewal(renewal)
    {
    }

    /// Whether a request that comes at `now`, by uptime(), is to be carried out.
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
