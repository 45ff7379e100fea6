// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionProgram.h"

#include <vector>

namespace corvane {

/// A program that runs and crashes as the test says, on a display that is there or not.
class FakeSessionProgram final : public SessionProgram {
    Q_OBJECT

public:
    [[nodiscard]] QString owner() const override { return runningAs; }
    [[nodiscard]] bool isThere(const SessionDisplay &) const override { return hasDisplay; }
    void start(const SessionDisplay &display) override { started.push_back(display); }

    /// It has left the bus.
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
