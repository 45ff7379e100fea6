// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/PowerSource.h"

#include <utility>

namespace corvane {

/// A machine whose plug a test pulls. It keeps the port's promises.
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
