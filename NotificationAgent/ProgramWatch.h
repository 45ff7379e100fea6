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

/// Brings the program back when it dies on a day of lessons: it greets the agent and says until when lessons
/// remain, and it takes its leave when it ends as it was told to. One that leaves the bus before then,
/// without a word, has crashed. A program that never greets, as an earlier version, is left alone. Main
/// thread only.
class ProgramWatch final : public QObject {
    Q_OBJECT

public:
    /// It is brought back so often within so many seconds.
    static constexpr qsizetype maximumReturns = 3;
    static constexpr qint64 returnWindow = 600;

    /// A session that ends takes its display along with the program, though not in the same moment: the
    /// display is looked at when the program leaves, and once more after this time.
    static constexpr std::chrono::milliseconds defaultSettlingTime{400};

    /// What is passed is borrowed. `log` takes a line.
    ProgramWatch(const WallClock &clock, SessionProgram &program, std::function<void(const QString &)> log,
                 std::chrono::milliseconds settlingTime = defaultSettlingTime, QObject *parent = nullptr);

    /// `caller`, a unique name of the bus, says that lessons remain until `lessonsUntil` (in seconds since
    /// 1970), and where its windows are. False when it is not the program.
    [[nodiscard]] bool greet(const QString &caller, qint64 lessonsUntil, const SessionDisplay &display);

    /// `caller` is about to end as it was told to. False when it is not the program.
    [[nodiscard]] bool takeLeave(const QString &caller);

    /// Whether the program would be brought back: the agent stays for as long.
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
    qint64 m_lessonsUntil = 0; ///< in seconds since 1970; 0 when nothing is to be done
    QList<qint64> m_returns;   ///< when it was brought back, in seconds since 1970
    QTimer m_settling;
    QTimer m_end;
};

} // namespace corvane
