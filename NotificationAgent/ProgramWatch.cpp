// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/ProgramWatch.h"

#include "NotificationAgent/AgentLog.h"
#include "NotificationAgent/SessionProgram.h"
#include "NotificationAgent/WallClock.h"

#include <algorithm>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

ProgramWatch::ProgramWatch(const WallClock &clock, SessionProgram &program,
                           std::function<void(const QString &)> log, std::chrono::milliseconds settlingTime,
                           QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_program(program)
    , m_log(std::move(log))
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &ProgramWatch::bringBack);
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &ProgramWatch::waitForTheEnd);
    connect(&m_program, &SessionProgram::left, this, &ProgramWatch::programLeft);
    connect(&m_program, &SessionProgram::startFailed, this, [this](const QString &reason) {
        m_log(u"Quillet did not start reason="_s + quotedForLog(reason));
        programLeft();
    });
}

bool ProgramWatch::greet(const QString &caller, qint64 lessonsUntil, const SessionDisplay &display)
{
    if (caller.isEmpty() || caller != m_program.owner()) {
        return false;
    }
    m_lessonsUntil = lessonsUntil;
    m_display = display;
    waitForTheEnd();
    return true;
}

bool ProgramWatch::takeLeave(const QString &caller)
{
    if (caller.isEmpty() || caller != m_program.owner()) {
        return false;
    }
    m_lessonsUntil = 0;
    Q_EMIT activityOccurred();
    return true;
}

bool ProgramWatch::isWatching() const
{
    return m_clock.now() < m_lessonsUntil;
}

// Checks the clock when the last lesson should be over, so that the agent can end then. If the clock is set
// meanwhile, the check is late, which does no harm, or early and then repeated.
void ProgramWatch::waitForTheEnd()
{
    m_end.stop();
    if (isWatching()) {
        constexpr qint64 day = 86'400;
        m_end.start(std::chrono::seconds(std::min(m_lessonsUntil - m_clock.now(), day)));
    }
    Q_EMIT activityOccurred();
}

void ProgramWatch::programLeft()
{
    if (!isWatching()) {
        return;
    }
    if (!m_program.isThere(m_display)) {
        giveUp(u"the session's display is gone"_s);
        return;
    }
    m_settling.start();
}

bool ProgramWatch::mayReturn() const
{
    const qint64 now = m_clock.now();
    return std::count_if(m_returns.begin(), m_returns.end(), [now](qint64 moment) {
               return moment <= now && now - moment < returnWindow;
           }) < maximumReturns;
}

void ProgramWatch::bringBack()
{
    // Someone else may have started it meanwhile.
    if (!isWatching() || !m_program.owner().isEmpty()) {
        return;
    }
    if (!m_program.isThere(m_display)) {
        giveUp(u"the session's display is gone"_s);
    } else if (!mayReturn()) {
        giveUp(u"it came back %1 times within %2 seconds"_s.arg(maximumReturns).arg(returnWindow));
    } else {
        m_returns.append(m_clock.now());
        m_returns = m_returns.last(std::min(m_returns.size(), maximumReturns));
        m_log(u"Quillet is brought back lessons_until=%1"_s.arg(m_lessonsUntil));
        m_program.start(m_display);
    }
}

void ProgramWatch::giveUp(const QString &reason)
{
    m_log(u"Quillet is not brought back reason="_s + quotedForLog(reason));
    m_lessonsUntil = 0;
    Q_EMIT activityOccurred();
}

} // namespace corvane
