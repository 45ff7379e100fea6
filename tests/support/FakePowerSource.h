// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/PowerSource.h"

#include <utility>

namespace corvane {

/// A power source that a test switches. It fulfils the port's contract.
class FakePowerSource final : public PowerSource {
    Q_OBJECT

public:
    using PowerSource::PowerSource;

    [[nodiscard]] bool isOnBattery() const override { return m_isOnBattery; }

    void setOnBattery(bool isOnBattery)
    {
        if (std::exchange(m_isOnBattery, isOnBattery) != isOnBattery) {
            Q_EMIT changed();
        }
    }

private:
    bool m_isOnBattery = false;
};

} // namespace corvane
