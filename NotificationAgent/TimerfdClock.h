// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/WallClock.h"

#include <optional>

class QSocketNotifier;

namespace corvane {

/// The machine's clock, with an alarm that the kernel keeps at an absolute moment: it rings on waking when
/// the machine slept over its moment, and when the clock is set.
class TimerfdClock final : public WallClock {
    Q_OBJECT

public:
    /// Ends the program where the kernel gives no timer.
    explicit TimerfdClock(QObject *parent = nullptr);
    ~TimerfdClock() override;

    [[nodiscard]] qint64 now() const override;
    void wakeAt(std::optional<qint64> second) override;

private:
    void handleAlarm();

    int m_timer;
    QSocketNotifier *m_alarm = nullptr;
};

} // namespace corvane
