// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/SessionDisplay.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace corvane {

class SessionProgram;
class WallClock;

/// Restarts the program if it crashes on a day with lessons. The program greets the agent, saying until when
/// lessons remain, and takes its leave before an orderly exit; if it leaves the bus before that time without
/// taking leave, it has crashed. A program that never greets, such as an earlier version, is not restarted.
/// Main thread only.
class ProgramWatch final : public QObject {
    Q_OBJECT

public:
    /// At most this many restarts within this many seconds.
    static constexpr qsizetype maximumReturns = 3;
    static constexpr qint64 returnWindow = 600;

    /// A session that ends takes down its display along with the program, but not at the same moment: the
    /// display is checked when the program leaves, and again after this time.
    static constexpr std::chrono::milliseconds defaultSettlingTime{400};

    /// Borrows the objects passed in. `log` writes a line to the log.
    ProgramWatch(const WallClock &clock, SessionProgram &program, std::function<void(const QString &)> log,
                 std::chrono::milliseconds settlingTime = defaultSettlingTime, QObject *parent = nullptr);

    /// `caller`, a unique bus name, reports that lessons remain until `lessonsUntil` (seconds since 1970
    /// UTC), and where its windows are. False if it is not the program.
    [[nodiscard]] bool greet(const QString &caller, qint64 lessonsUntil, const SessionDisplay &display);

    /// `caller` is about to exit in an orderly way. False if it is not the program.
    [[nodiscard]] bool takeLeave(const QString &caller);

    /// Whether the program would be restarted; the agent stays that long.
    [[nodiscard]] bool isWatching() const;

Q_SIGNALS:
    /// isWatching() may have changed.
    void activityOccurred();

private:
    void programLeft();
    void bringBack();
    void giveUp(const QString &reason);
    void waitForTheEnd();
    [[nodiscard]] bool mayReturn() const;

    const WallClock &m_clock;
    SessionProgram &m_program;
    std::function<void(const QString &)> m_log;
    SessionDisplay m_display;
    qint64 m_lessonsUntil = 0; ///< in seconds since 1970 UTC; 0 if not watching
    QList<qint64> m_returns;   ///< times of restarts, in seconds since 1970 UTC
    QTimer m_settling;
    QTimer m_end;
};

} // namespace corvane
