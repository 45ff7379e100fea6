// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionProgram.h"

#include <vector>

namespace corvane {

/// A program that runs and crashes on the test's command, with or without a display.
class FakeSessionProgram final : public SessionProgram {
    Q_OBJECT

public:
    [[nodiscard]] QString owner() const override { return runningAs; }
    [[nodiscard]] bool isThere(const SessionDisplay &) const override { return hasDisplay; }
    void start(const SessionDisplay &display) override { started.push_back(display); }

    /// Makes the program leave the bus.
    void leave()
    {
        runningAs.clear();
        Q_EMIT left();
    }

    QString runningAs; ///< its unique name on the bus
    bool hasDisplay = true;
    std::vector<SessionDisplay> started;
};

} // namespace corvane
