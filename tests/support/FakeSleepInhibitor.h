// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SleepInhibitor.h"

#include <utility>

namespace corvane {

/// Counts how often sleep was newly inhibited. It fulfils the port's contract.
class FakeSleepInhibitor final : public SleepInhibitor {
public:
    bool isHeld = false;
    int times = 0;

    void keepAwake() override { times += std::exchange(isHeld, true) ? 0 : 1; }
    void letSleep() override { isHeld = false; }
};

} // namespace corvane
