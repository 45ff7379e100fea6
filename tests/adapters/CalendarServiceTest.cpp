// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarServiceFixture.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// A calendar service that is killed and given new events.
class CalendarServiceTest final : public CalendarServiceFixture {
    Q_OBJECT

private Q_SLOTS:
    void onlyEnabledCalendarsAreRead()
    {
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));
    }

    void foldersAndServiceAreMerged()
    {
        m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Bea"));
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Bea"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));
    }

    void theClientsStayOpenBetweenLoads()
    {
        QCOMPARE(load().size(), 3);
        QElapsedTimer timer;
        timer.start();
        for (int number = 0; number < 20; ++number) {
            QCOMPARE(load().size(), 3);
        }
        // Opening the clients for each load would take several seconds.
        QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
    }

    void aServiceKilledBetweenLoadsIsOpenedAgain()
    {
        QCOMPARE(load().size(), 3);
        m_service->kill(CalendarService::Part::factory);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(load().size(), 3);
        QVERIFY(timer.elapsed() < limit);
        // The library tells a moment later that the service has died; until then the answer is known.
        QTRY_VERIFY((static_cast<void>(load()), logged(u"calendar opened again"_s)) > 0);
    }

    void aServiceKilledDuringALoadKeepsTheLessons()
    {
        QCOMPARE(load().size(), 3);
        for (int number = 0; number < 10; ++number) {
            wishForNews();
            auto loading = beginLoad();
            m_service->signal(CalendarService::Part::factory, SIGKILL);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(titles(QCoro::waitFor(std::move(loading))).size(), 3);
            QVERIFY(timer.elapsed() < limit);
            wishForNews();
            QCOMPARE(load().size(), 3);
        }
        QVERIFY(logged(u"calendar opened again"_s) + logged(u"did not answer"_s) > 0);
    }

    void aNewCalendarAppearsAndARemovedOneDisappears()
    {
        QCOMPARE(load().size(), 3);
        CalendarService::addCalendar(u"third"_s, u"Evening"_s, calendarText(lesson("Zoom - Dora")));
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Dora"_s), 30000);
        CalendarService::removeCalendar(u"third"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!load().contains(u"Zoom - Dora"_s), 30000);
    }

    void anEventWrittenIntoTheFileAppears()
    {
        QCOMPARE(load().size(), 3);
        CalendarService::addCalendar(
            u"second"_s, u"Lessons"_s,
            calendarText(lesson("Zoom - Cleo") + lesson("Zoom - Emil", "RRULE:FREQ=DAILY\n")));
        QTRY_COMPARE_WITH_TIMEOUT(
            load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s, u"Zoom - Emil"_s}),
            30000);
        CalendarService::addCalendar(u"second"_s, u"Lessons"_s, calendarText(lesson("Zoom - Cleo")));
        QTRY_COMPARE_WITH_TIMEOUT(load().size(), 3, 30000);
    }

    void hostileEventsAreLeftOutAndTheOthersShown()
    {
        const QByteArray start = "BEGIN:VEVENT\nUID:%N\nDTSTAMP:20250101T000000Z\nDTSTART:19700101T000000Z\n"
                                 "DTEND:19700101T000001Z\nRRULE:%R\nSUMMARY:Zoom - %N\nEND:VEVENT\n";
        QByteArray text = lesson("Zoom - Fay");
        int number = 0;
        for (const char *rule :
             {"FREQ=SECONDLY", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=MINUTELY", "FREQ=HOURLY"}) {
            text +=
                QByteArray(start).replace("%N", "hostile" + QByteArray::number(++number)).replace("%R", rule);
        }
        text += lesson("Zoom - " + QByteArray(1'000'000, 'a'));
        CalendarService::addCalendar(u"hostile"_s, u"Hostile"_s, calendarText(text));
        EventLoopWatch watch;
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Fay"_s), 30000);
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(load(),
                     (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s, u"Zoom - Fay"_s}));
            QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
        }
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
        QCOMPARE(logged(u"calendar event left out calendar=\"Hostile\""_s), 5);
        CalendarService::removeCalendar(u"hostile"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!load().contains(u"Zoom - Fay"_s), 30000);
    }

    void aStoreMayBeDestroyedDuringACall()
    {
        auto first = beginLoad();
        QCOMPARE(titles(QCoro::waitFor(std::move(first))).size(), 3);
        auto second = m_room->store().events(testDay());
        m_room->stop();
        [[maybe_unused]] const auto either = QCoro::waitFor(std::move(second));
    }
};

QUILLET_TEST(CalendarServiceTest, runTest<CalendarServiceTest>);
#include "CalendarServiceTest.moc"
