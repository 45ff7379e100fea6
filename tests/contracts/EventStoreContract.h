// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/EventStore.h"
#include "Corvane/Utilities/DateText.h"

#include <QTest>

#include <functional>

namespace corvane {

/// What every event store answers. A test class derives from it, hands over a new store for each test, and
/// puts contractEvents() into its calendar before.
class EventStoreContract : public QObject {
    Q_OBJECT

public:
    /// The events that the calendar under test holds; each test looks at a day of its own.
    [[nodiscard]] static std::vector<CalendarEvent> contractEvents()
    {
        using namespace Qt::StringLiterals;
        std::vector<CalendarEvent> events;
        const auto add = [&events](std::optional<QString> title, const char *start,
                                   const char *end) -> CalendarEvent & {
            CalendarEvent event;
            event.title = std::move(title);
            event.startDate = moment(start);
            event.endDate = moment(end);
            events.push_back(event);
            return events.back();
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

    /// The same as the text of a calendar file.
    [[nodiscard]] static QByteArray contractCalendar()
    {
        using namespace Qt::StringLiterals;
        const auto escape = [](QString text) {
            return text.replace(u"\\"_s, u"\\\\"_s)
                .replace(u";"_s, u"\\;"_s)
                .replace(u","_s, u"\\,"_s)
                .replace(u"\n"_s, u"\\n"_s);
        };
        QString text;
        int number = 0;
        for (const CalendarEvent &event : contractEvents()) {
            const auto time = [&event](Date date) {
                return event.isAllDay ? toDateTime(date).toString(u"';VALUE=DATE:'yyyyMMdd"_s)
                                      : toDateTime(date).toString(u"':'yyyyMMdd'T'hhmmss'Z'"_s);
            };
            text += u"BEGIN:VEVENT\nUID:contract-%1\nDTSTAMP:20250101T000000Z\n"_s.arg(++number);
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
        }
        return text.toUtf8();
    }

protected:
    /// A new store in the time zone UTC.
    virtual std::unique_ptr<EventStore> makeStore() = 0;

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

    /// Notes the number of an answer when it comes.
    static QCoro::Task<void> note(QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> answer,
                                  int number, std::vector<int> &order)
    {
        co_await answer;
        order.push_back(number);
    }

private Q_SLOTS:
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

    void eventsThatOverlapTheDayAreAnswered()
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

    void textsAreCopiedAsTheyAre()
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

    void eventsComeInTheOrderOfTheirStarts()
    {
        const QStringList expected{QStringLiteral("first"), QStringLiteral("second"),
                                   QStringLiteral("third")};
        QCOMPARE(titles(eventsOf("2025-03-12")), expected);
    }

    void wholeDaysAreMarked()
    {
        const auto found = eventsOf("2025-03-14");
        QCOMPARE(found.size(), std::size_t{1});
        QVERIFY(found[0].isAllDay);
        QVERIFY(found[0] == contractEvents().back());
    }

    void aWholeDayDoesNotReachIntoTheNext() { QVERIFY(eventsOf("2025-03-15").empty()); }

    void aDayWithoutEventsIsAnEmptyAnswer()
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
        for (int number = 0; number < 6; ++number) {
            tasks.push_back(note(store->events(day(days[number])), number, order));
        }
        QTRY_COMPARE_WITH_TIMEOUT(order.size(), std::size_t{6}, 10000);
        QCOMPARE(order, (std::vector<int>{0, 1, 2, 3, 4, 5}));
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
