// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/EventLoopWatch.h"

#include <QTest>

#include <algorithm>
#include <iterator>
#include <memory>

namespace corvane {

/// What every implementation of EventStore must do. A test class derives from it and provides a new store for
/// each test, whose calendars contain contractEvents(), or the equivalent contractComponents().
class EventStoreContract : public QObject {
    Q_OBJECT

public:
    /// The events that the calendars under test must return; tests of different subjects use different days.
    [[nodiscard]] static std::vector<CalendarEvent> contractEvents()
    {
        using namespace Qt::StringLiterals;
        std::vector<CalendarEvent> events = writtenEvents();
        // Four Mondays from 17 March on: the second is moved, the third removed.
        events.push_back(eventOf(u"series"_s, "2025-03-17T09:00:00Z", "2025-03-17T09:30:00Z"));
        events.push_back(eventOf(u"series, moved"_s, "2025-03-25T11:00:00Z", "2025-03-25T11:30:00Z"));
        events.push_back(eventOf(u"series"_s, "2025-04-07T09:00:00Z", "2025-04-07T09:30:00Z"));
        // 19 March: events that may not take place.
        events.push_back(eventOf(u"tentative"_s, "2025-03-19T08:00:00Z", "2025-03-19T08:30:00Z"));
        events.push_back(eventOf(u"declined"_s, "2025-03-19T09:00:00Z", "2025-03-19T09:30:00Z"));
        return events;
    }

    /// The same events as components of calendar files, which may be spread over several calendars.
    [[nodiscard]] static QList<QByteArray> contractComponents()
    {
        QList<QByteArray> components;
        for (const CalendarEvent &written : writtenEvents()) {
            components.append(component(written, static_cast<int>(components.size())));
        }
        return components << "BEGIN:VEVENT\nUID:contract-series\nDTSTAMP:20250101T000000Z\nSUMMARY:series\n"
                             "DTSTART:20250317T090000Z\nDTEND:20250317T093000Z\nRRULE:FREQ=WEEKLY;COUNT=4\n"
                             "EXDATE:20250331T090000Z\nEND:VEVENT\n"
                             "BEGIN:VEVENT\nUID:contract-series\nDTSTAMP:20250101T000000Z\n"
                             "RECURRENCE-ID:20250324T090000Z\nSUMMARY:series\\, moved\n"
                             "DTSTART:20250325T110000Z\nDTEND:20250325T113000Z\nEND:VEVENT\n"
                          << "BEGIN:VEVENT\nUID:contract-tentative\nDTSTAMP:20250101T000000Z\n"
                             "SUMMARY:tentative\nDTSTART:20250319T080000Z\nDTEND:20250319T083000Z\n"
                             "STATUS:TENTATIVE\nEND:VEVENT\n"
                          << "BEGIN:VEVENT\nUID:contract-declined\nDTSTAMP:20250101T000000Z\n"
                             "SUMMARY:declined\nDTSTART:20250319T090000Z\nDTEND:20250319T093000Z\n"
                             "ATTENDEE;PARTSTAT=DECLINED:mailto:teacher@quillet.example\nEND:VEVENT\n"
                          << "BEGIN:VEVENT\nUID:contract-cancelled\nDTSTAMP:20250101T000000Z\n"
                             "SUMMARY:cancelled\nDTSTART:20250319T100000Z\nDTEND:20250319T103000Z\n"
                             "STATUS:CANCELLED\nEND:VEVENT\n";
    }

private:
    [[nodiscard]] static CalendarEvent eventOf(std::optional<QString> title, const char *start,
                                               const char *end)
    {
        CalendarEvent event;
        event.title = std::move(title);
        event.startDate = moment(start);
        event.endDate = moment(end);
        return event;
    }

    /// The events that are not part of a series.
    [[nodiscard]] static std::vector<CalendarEvent> writtenEvents()
    {
        using namespace Qt::StringLiterals;
        std::vector<CalendarEvent> events;
        const auto add = [&events](std::optional<QString> title, const char *start,
                                   const char *end) -> CalendarEvent & {
            return events.emplace_back(eventOf(std::move(title), start, end));
        };
        // 3 March 2025: the edges of a day.
        add(u"ends as the day begins"_s, "2025-03-02T22:00:00Z", "2025-03-03T00:00:00Z");
        add(u"runs into the day"_s, "2025-03-02T23:30:00Z", "2025-03-03T00:30:00Z");
        add(u"begins with the day"_s, "2025-03-03T00:00:00Z", "2025-03-03T01:00:00Z");
        add(u"moment at the beginning"_s, "2025-03-03T00:00:00Z", "2025-03-03T00:00:00Z");
        add(u"runs out of the day"_s, "2025-03-03T23:30:00Z", "2025-03-04T00:30:00Z");
        add(u"begins as the day ends"_s, "2025-03-04T00:00:00Z", "2025-03-04T01:00:00Z");
        add(u"moment at the end"_s, "2025-03-04T00:00:00Z", "2025-03-04T00:00:00Z");
        add(u"lasts for days"_s, "2025-03-01T12:00:00Z", "2025-03-06T12:00:00Z");
        // 10 March: texts.
        CalendarEvent &full =
            add(u"Zoom - Anna, \"A\"; \\ 50% ünï 课"_s, "2025-03-10T09:00:00Z", "2025-03-10T09:30:00Z");
        full.location = u"Room 1; second floor, left"_s;
        full.notes = u"First line\nSecond line, with \\ and ;\n\nhttps://zoom.us/j/1?pwd=a,b"_s;
        full.url = QUrl(u"https://zoom.us/j/123?pwd=x"_s);
        add(std::nullopt, "2025-03-10T10:00:00Z", "2025-03-10T10:30:00Z");
        // 12 March: order.
        add(u"third"_s, "2025-03-12T12:00:00Z", "2025-03-12T12:30:00Z");
        add(u"first"_s, "2025-03-12T08:00:00Z", "2025-03-12T08:30:00Z");
        add(u"second"_s, "2025-03-12T10:00:00Z", "2025-03-12T10:30:00Z");
        // 14 March: a whole day, in UTC.
        add(u"holiday"_s, "2025-03-14T00:00:00Z", "2025-03-15T00:00:00Z").isAllDay = true;
        return events;
    }

    [[nodiscard]] static QByteArray component(const CalendarEvent &event, int number)
    {
        using namespace Qt::StringLiterals;
        const auto escape = [](QString text) {
            return text.replace(u"\\"_s, u"\\\\"_s)
                .replace(u";"_s, u"\\;"_s)
                .replace(u","_s, u"\\,"_s)
                .replace(u"\n"_s, u"\\n"_s);
        };
        const auto time = [&event](Date date) {
            return event.isAllDay ? toDateTime(date).toString(u"';VALUE=DATE:'yyyyMMdd"_s)
                                  : toDateTime(date).toString(u"':'yyyyMMdd'T'hhmmss'Z'"_s);
        };
        QString text = u"BEGIN:VEVENT\nUID:contract-%1\nDTSTAMP:20250101T000000Z\n"_s.arg(number);
        text += u"DTSTART"_s + time(event.startDate) + u"\nDTEND"_s + time(event.endDate) + u'\n';
        if (event.title) {
            text += u"SUMMARY:"_s + escape(*event.title) + u'\n';
        }
        if (event.location) {
            text += u"LOCATION:"_s + escape(*event.location) + u'\n';
        }
        if (event.notes) {
            text += u"DESCRIPTION:"_s + escape(*event.notes) + u'\n';
        }
        if (event.url) {
            text += u"URL:"_s + event.url->toString() + u'\n';
        }
        text += u"END:VEVENT\n"_s;
        return text.toUtf8();
    }

protected:
    /// A new store in the time zone UTC.
    virtual std::unique_ptr<EventStore> makeStore() = 0;
    /// A new store where there is no calendar to grant access to. Called once, before makeStore().
    virtual std::unique_ptr<EventStore> makeStoreWithoutAccess() = 0;
    /// Makes calendars available, so that access is granted from now on, including to that store.
    virtual void allowAccess() = 0;

    [[nodiscard]] static Date moment(const char *text)
    {
        return fromDateTime(QDateTime::fromString(QLatin1StringView(text), Qt::ISODate));
    }

    [[nodiscard]] static DateInterval day(const char *date)
    {
        const Date start = moment(qPrintable(QString::fromLatin1(date) + QStringLiteral("T00:00:00Z")));
        return {start, start + Seconds{86400}};
    }

private:
    [[nodiscard]] std::vector<CalendarEvent> eventsOf(const char *date)
    {
        const auto store = makeStore();
        const auto granted = QCoro::waitFor(store->requestFullAccessToEvents());
        if (!granted || !*granted) {
            return {};
        }
        return QCoro::waitFor(store->events(day(date))).value_or(std::vector<CalendarEvent>());
    }

    [[nodiscard]] static QStringList titles(const std::vector<CalendarEvent> &events)
    {
        QStringList titles;
        for (const CalendarEvent &event : events) {
            titles << event.title.value_or(QStringLiteral("(none)"));
        }
        return titles;
    }

    /// Appends `number` to `order` when the answer arrives.
    static QCoro::Task<void> note(QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> answer,
                                  int number, std::vector<int> &order)
    {
        [[maybe_unused]] const auto events = co_await answer;
        order.push_back(number);
    }

private Q_SLOTS:
    void aDenialIsNotRemembered()
    {
        const auto store = makeStoreWithoutAccess();
        const auto denied = QCoro::waitFor(store->requestFullAccessToEvents());
        QVERIFY(denied.has_value());
        QVERIFY(!*denied);
        QVERIFY(store->authorizationStatus() != CalendarAuthorization::fullAccess);
        allowAccess();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        QCOMPARE(store->authorizationStatus(), CalendarAuthorization::fullAccess);
    }

    void nothingIsDecidedBeforeTheFirstRequest()
    {
        QCOMPARE(makeStore()->authorizationStatus(), CalendarAuthorization::notDetermined);
    }

    void aGrantedRequestGivesFullAccess()
    {
        const auto store = makeStore();
        const auto granted = QCoro::waitFor(store->requestFullAccessToEvents());
        QVERIFY(granted.has_value());
        QVERIFY(*granted);
        QCOMPARE(store->authorizationStatus(), CalendarAuthorization::fullAccess);
    }

    void eventsThatOverlapTheDayAreReturned()
    {
        QStringList found = titles(eventsOf("2025-03-03"));
        found.sort();
        const QStringList expected{QStringLiteral("begins with the day"), QStringLiteral("lasts for days"),
                                   QStringLiteral("moment at the beginning"),
                                   QStringLiteral("runs into the day"),
                                   QStringLiteral("runs out of the day")};
        QCOMPARE(found, expected);
    }

    void eventsKeepTheirTimesOutsideTheDay()
    {
        for (const CalendarEvent &event : eventsOf("2025-03-03")) {
            if (event.title == QStringLiteral("runs into the day")) {
                QCOMPARE(descriptionText(event.startDate), QStringLiteral("2025-03-02 23:30:00 +0000"));
                QCOMPARE(descriptionText(event.endDate), QStringLiteral("2025-03-03 00:30:00 +0000"));
                return;
            }
        }
        QFAIL("the event is missing");
    }

    void textsAreReturnedUnchanged()
    {
        const auto found = eventsOf("2025-03-10");
        const auto all = contractEvents();
        const auto expected =
            std::ranges::find_if(all, [](const auto &event) { return event.url.has_value(); });
        QCOMPARE(found.size(), std::size_t{2});
        QCOMPARE(found[0].title, expected->title);
        QCOMPARE(found[0].location, expected->location);
        QCOMPARE(found[0].notes, expected->notes);
        QCOMPARE(found[0].url, expected->url);
        QVERIFY(found[0] == *expected);
    }

    void anEventWithoutATitleHasNone()
    {
        const auto found = eventsOf("2025-03-10");
        QCOMPARE(found.size(), std::size_t{2});
        QVERIFY(!found[1].title.has_value());
        QVERIFY(!found[1].location.has_value());
        QVERIFY(!found[1].notes.has_value());
        QVERIFY(!found[1].url.has_value());
    }

    void eventsAreSortedByStart()
    {
        const QStringList expected{QStringLiteral("first"), QStringLiteral("second"),
                                   QStringLiteral("third")};
        QCOMPARE(titles(eventsOf("2025-03-12")), expected);
    }

    void allDayEventsAreMarked()
    {
        const auto found = eventsOf("2025-03-14");
        QCOMPARE(found.size(), std::size_t{1});
        QVERIFY(found[0].isAllDay);
        const auto all = contractEvents();
        QVERIFY(found[0] == *std::ranges::find_if(all, &CalendarEvent::isAllDay));
    }

    void anAllDayEventDoesNotReachIntoTheNextDay() { QVERIFY(eventsOf("2025-03-15").empty()); }

    void occurrencesAreReturnedOneByOne()
    {
        const auto all = contractEvents();
        for (const char *const date :
             {"2025-03-17", "2025-03-24", "2025-03-25", "2025-03-31", "2025-04-07", "2025-04-14"}) {
            std::vector<CalendarEvent> expected;
            std::ranges::copy_if(all, std::back_inserter(expected), [date](const CalendarEvent &event) {
                return event.startDate >= day(date).start && event.startDate < day(date).end;
            });
            QVERIFY2(eventsOf(date) == expected, date);
        }
    }

    void cancelledEventsAreLeftOutAndUncertainOnesKept()
    {
        const QStringList expected{QStringLiteral("tentative"), QStringLiteral("declined")};
        QCOMPARE(titles(eventsOf("2025-03-19")), expected);
    }

    void callsEndInTimeAndNeverBlock()
    {
        EventLoopWatch watch;
        const Seconds begin = uptime();
        const auto store = makeStore();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        QVERIFY(QCoro::waitFor(store->events(day("2025-03-03"))).has_value());
        QVERIFY(uptime() - begin < Seconds{5});
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
    }

    void aDayWithoutEventsGivesAnEmptyAnswer()
    {
        const auto store = makeStore();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        const auto found = QCoro::waitFor(store->events(day("2025-06-01")));
        QVERIFY(found.has_value());
        QVERIFY(found->empty());
    }

    void answersArriveInTheOrderOfTheCalls()
    {
        const auto store = makeStore();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        std::vector<int> order;
        std::vector<QCoro::Task<void>> tasks;
        const char *const days[] = {"2025-03-03", "2025-03-03", "2025-03-10",
                                    "2025-03-03", "2025-06-01", "2025-06-01"};
        tasks.reserve(std::size(days));
        for (int number = 0; number < 6; ++number) {
            tasks.push_back(note(store->events(day(days[number])), number, order));
        }
        QTRY_COMPARE_WITH_TIMEOUT(order.size(), std::size_t{6}, 10000);
        QCOMPARE(order, (std::vector<int>{0, 1, 2, 3, 4, 5}));
    }

    void theMonitorHasTheEventsOfTheLastLoad()
    {
        const auto store = makeStore();
        [[maybe_unused]] const auto granted = QCoro::waitFor(store->requestFullAccessToEvents());
        const auto events = QCoro::waitFor(store->events(day("2025-03-12")));
        QCOMPARE(events->size(), std::size_t{3});
        QCOMPARE(titles(store->monitor().events()), titles(*events));
    }

    void aRefreshReturnsAtOnceAndChangesNoAnswer()
    {
        const auto store = makeStore();
        EventLoopWatch watch;
        store->refresh(CalendarRefresh::wished);
        [[maybe_unused]] const auto granted = QCoro::waitFor(store->requestFullAccessToEvents());
        store->refresh(CalendarRefresh::wished);
        store->refresh(CalendarRefresh::regular);
        QCOMPARE(QCoro::waitFor(store->events(day("2025-03-12")))->size(), std::size_t{3});
        QVERIFY(watch.longestGap() < EventLoopWatch::blockedThreshold);
    }

    void callsForTheSameDayGetTheSameAnswer()
    {
        const auto store = makeStore();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        auto first = store->events(day("2025-03-03"));
        auto second = store->events(day("2025-03-03"));
        const auto one = QCoro::waitFor(std::move(first));
        const auto two = QCoro::waitFor(std::move(second));
        QVERIFY(one.has_value() && two.has_value());
        QCOMPARE(one->size(), std::size_t{5});
        QVERIFY(*one == *two);
    }
};

} // namespace corvane
