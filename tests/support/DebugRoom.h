// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/DebugRow.h"
#include "Corvane/Views/DebugRowList.h"
#include "Corvane/Views/DebugWindowView.h"
#include "tests/support/ViewModelFixture.h"

#include <QScrollArea>
#include <QTest>

#include <memory>

/// The debug window's content, showing a program state that the test makes up.
namespace corvane {

using namespace Qt::StringLiterals;

inline const QString longName = u"Maximiliane Konstantina Theodora "_s.repeated(7).left(200);

inline CalendarStatus calendar(const QString &name, const QString &account,
                               CalendarStatus::Condition condition, const QString &reason = {},
                               bool usesLastAnswer = false)
{
    const bool fails =
        condition != CalendarStatus::Condition::answers && condition != CalendarStatus::Condition::unread;
    return {.identifier = name,
            .name = name,
            .account = account,
            .condition = condition,
            .reason = reason,
            .lastRead =
                condition == CalendarStatus::Condition::unread ? std::nullopt : std::optional(at("09:10:00")),
            .failingSince = fails ? std::optional(at("09:14:00")) : std::nullopt,
            .usesLastAnswer = usesLastAnswer,
            .eventCount = condition == CalendarStatus::Condition::answers ? 3 : 0};
}

/// One calendar in each condition.
inline std::vector<CalendarStatus> calendars()
{
    return {calendar(u"Lessons"_s, u"anna@school.example"_s, CalendarStatus::Condition::answers),
            calendar(u"New"_s, u"anna@school.example"_s, CalendarStatus::Condition::unread),
            calendar(u"Bookings"_s, u"dav.example"_s, CalendarStatus::Condition::awaitsPassword),
            calendar(u"Shared"_s, u"dav.example"_s, CalendarStatus::Condition::silent, {}, true),
            calendar(u"Holidays"_s, u"On this computer"_s, CalendarStatus::Condition::unopened,
                     u"the server refuses it"_s),
            calendar(u"invite.ics"_s, u"~/.calendars"_s, CalendarStatus::Condition::leftOut,
                     u"it is no calendar file"_s)};
}

inline CalendarEvent booked(const QString &title, const char *start, const char *end)
{
    CalendarEvent event;
    event.title = title;
    event.startDate = at(start);
    event.endDate = at(end);
    return event;
}

inline std::vector<CalendarEvent> events()
{
    CalendarEvent holiday = booked(u"School holiday"_s, "00:00:00", "23:59:59");
    holiday.isAllDay = true;
    return {holiday, booked(u"Dentist"_s, "08:00:00", "09:00:00"),
            booked(u"Zoom - Anna"_s, "10:00:00", "10:30:00"),
            booked(u"Team meeting"_s, "12:00:00", "13:00:00")};
}

/// The debug window's content, and the links that it asked to open.
struct DebugRoom : ViewModelFixture {
    DebugRoom() : ViewModelFixture("09:57:00")
    {
        start({sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))});
        monitor.setCalendars(calendars());
        monitor.setEvents(events());
        // A log of its own: the path of the fixture's log differs from run to run.
        log.log(u"app started"_s, at("09:56:00"));
        log.log(u"calendar lesson student=\"Anna\" platform=\"Zoom\" start=2026-11-16 10:00:00 +0000"_s,
                at("09:57:00"));
        view = std::make_unique<DebugWindowView>(
            *model, DebugSources{.calendars = monitor, .parser = parser, .log = log},
            [this](const QUrl &link) {
                opened << link;
                return opens;
            });
        view->resize(620, 700);
    }

    void show() const
    {
        view->show();
        QTRY_VERIFY(view->isActiveWindow());
    }

    [[nodiscard]] DebugRowList *list(const QString &name) const
    {
        for (auto *list : view->findChildren<DebugRowList *>()) {
            if (list->accessibleName() == name) {
                return list;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QStringList rows(const QString &name) const
    {
        QStringList texts;
        for (const DebugRow *row : list(name)->rows()) {
            texts << row->accessibleName();
        }
        return texts;
    }

    [[nodiscard]] QScrollArea *page() const { return view->findChild<QScrollArea *>(); }

    CalendarMonitor monitor;
    CalendarLessonParser parser{PlatformProfile::defaults()};
    QTemporaryDir folder;
    DebugLogService log{folder.path()};
    QList<QUrl> opened;
    bool opens = true;
    std::unique_ptr<DebugWindowView> view;
};

} // namespace corvane
