// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/TimerfdClock.h"

#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>

namespace corvane {

TimerfdClock::TimerfdClock(QObject *parent)
    : WallClock(parent)
    , m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0) {
        qFatal("the kernel gives no timer");
    }
    m_alarm = new QSocketNotifier(m_timer, QSocketNotifier::Read, this);
    connect(m_alarm, &QSocketNotifier::activated, this, &TimerfdClock::handleAlarm);
}

TimerfdClock::~TimerfdClock()
{
    // The notifier must go before the descriptor that it watches.
    delete m_alarm;
    ::close(m_timer);
}

qint64 TimerfdClock::now() const
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec;
}

void TimerfdClock::wakeAt(std::optional<qint64> second)
{
    itimerspec moment{};
    if (second) {
        // All zeros would stop the timer.
        moment.it_value.tv_sec = std::max<qint64>(*second, 1);
    }
    const int flags = second ? TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET : 0;
    // ECANCELED means that the clock was set since the last read; the next attempt succeeds.
    while (::timerfd_settime(m_timer, flags, &moment, nullptr) != 0) {
        if (errno != ECANCELED) {
            qFatal("the kernel refuses the timer");
        }
    }
}

void TimerfdClock::handleAlarm()
{
    quint64 count = 0;
    // Fails with ECANCELED if the clock was set, and with EAGAIN if the alarm was changed meanwhile.
    const ssize_t length = ::read(m_timer, &count, sizeof count);
    if (length == static_cast<ssize_t>(sizeof count) || errno == ECANCELED) {
        Q_EMIT woke();
    }
}

} // namespace corvane
