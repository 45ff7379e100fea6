// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/WallClockAlarm.h"

#include <QObject>

#include <memory>

namespace corvane {

/// Reports that the wall clock was set by more than leastChange. Main thread only. Reports nothing if the
/// alarm does not work.
class ClockSetWatcher final : public QObject {
    Q_OBJECT

public:
    explicit ClockSetWatcher(std::unique_ptr<WallClockAlarm> alarm, QObject *parent = nullptr);
    ~ClockSetWatcher() override;

    /// Smaller changes count once they add up to this.
    static constexpr Seconds leastChange{0.1};

Q_SIGNALS:
    void clockWasSet();

private:
    void handleAlarm();

    std::unique_ptr<WallClockAlarm> m_alarm;
    Seconds m_offset{}; ///< of the wall clock, as last reported
};

} // namespace corvane
