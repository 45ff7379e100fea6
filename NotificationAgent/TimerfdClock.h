// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/WallClock.h"

#include <optional>

class QSocketNotifier;

namespace corvane {

/// The machine's clock with a kernel alarm at an absolute time: it fires on waking if the machine slept past
/// that time, and when the clock is set.
class TimerfdClock final : public WallClock {
    Q_OBJECT

public:
    /// Aborts the process if the kernel provides no timer.
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
