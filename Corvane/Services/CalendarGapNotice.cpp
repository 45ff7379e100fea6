// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarGapNotice.h"

#include "Corvane/Notifications/QuietNotice.h"
#include "Corvane/Services/CalendarGaps.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

CalendarGapNotice::CalendarGapNotice(const CalendarMonitor &monitor, UserNotificationCenter &center,
                                     DebugLogService &logger, QObject *parent)
    : QObject(parent)
    , m_monitor(monitor)
    , m_center(center)
    , m_logger(logger)
{
    connect(&monitor, &CalendarMonitor::changed, this, &CalendarGapNotice::update);
    update();
}

void CalendarGapNotice::update()
{
    QHash<QString, Gap> gaps;
    bool hasNew = false;
    for (const CalendarStatus &calendar : calendarGaps::among(m_monitor.calendars())) {
        const auto known = m_gaps.constFind(calendar.identifier);
        hasNew = hasNew || known == m_gaps.constEnd();
        gaps.insert(calendar.identifier, known != m_gaps.constEnd() ? *known : Gap{.since = uptime()});
    }
    m_gaps = std::move(gaps);
    if (hasNew) {
        spawn(tellAfter(this, patience));
    }
    // A gap that delayed the report of the others may have ended.
    tellWhatIsDue();
}

QCoro::Task<void> CalendarGapNotice::tellAfter(Self self, Seconds duration)
{
    co_await wait(duration);
    if (self != nullptr) {
        self->tellWhatIsDue();
    }
}

void CalendarGapNotice::tellWhatIsDue()
{
    const Seconds now = uptime();
    Seconds first = Seconds::max();
    Seconds last = Seconds::zero();
    for (const Gap &gap : std::as_const(m_gaps)) {
        first = gap.isTold ? first : std::min(first, gap.since);
    }
    for (const Gap &gap : std::as_const(m_gaps)) {
        last = gap.isTold || gap.since > first + together ? last : std::max(last, gap.since);
    }
    if (first == Seconds::max() || now < last + patience) {
        return;
    }
    std::vector<CalendarStatus> told;
    for (const CalendarStatus &calendar : calendarGaps::among(m_monitor.calendars())) {
        Gap &gap = m_gaps[calendar.identifier];
        if (!gap.isTold && now >= gap.since + patience) {
            gap.isTold = true;
            told.push_back(calendar);
        }
    }
    const Date date = currentDate();
    spawn(
        notify(this, quietNotice(u"quillet.calendar-gap"_s, u"quillet.calendar"_s, calendarGaps::title(told),
                                 calendarGaps::body(told, date, QLocale()), date)));
}

QCoro::Task<void> CalendarGapNotice::notify(Self self, NotificationRequest request)
{
    const auto granted = co_await self->m_center.requestAuthorization();
    if (self == nullptr) {
        co_return;
    }
    if (granted && !*granted) {
        self->m_logger.log(u"calendar gap not told: notifications are not granted"_s);
        co_return;
    }
    const auto added = co_await self->m_center.add(request);
    if (self != nullptr) {
        self->m_logger.log(added ? u"calendar gap told"_s
                                 : u"calendar gap not told error="_s + added.error().localizedDescription);
    }
}

} // namespace corvane
