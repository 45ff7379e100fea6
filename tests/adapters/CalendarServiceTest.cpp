// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/CalendarService.h"
#include "tests/adapters/CalendarRoom.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// Milliseconds. A load's two steps together give up after 4.5 s; the rest is for a busy machine.
constexpr auto limit = 8000;

int threadCount()
{
    QFile status(u"/proc/self/status"_s);
    return status.open(QIODevice::ReadOnly) ? QRegularExpression(u"Threads:\\s*(\\d+)"_s)
                                                  .match(QString::fromLatin1(status.readAll()))
                                                  .captured(1)
                                                  .toInt()
                                            : -1;
}

} // namespace

/// The complete store over a real calendar service, which is killed, stopped and given new events.
class CalendarServiceTest : public QObject {
    Q_OBJECT

    std::unique_ptr<CalendarRoom> m_room;
    std::unique_ptr<CalendarService> m_service;

    [[nodiscard]] QStringList load(int daysLater = 0) { return m_room->load(daysLater); }
    [[nodiscard]] auto beginLoad() { return CalendarRoom::load(m_room->store(), testDay()); }
    [[nodiscard]] qsizetype logged(const QString &part) const { return m_room->logged(part); }

private Q_SLOTS:
    void initTestCase()
    {
        CalendarService::writeCalendar(
            calendarText(lesson("Zoom - Anna") + lesson("Zoom - Ben", "RRULE:FREQ=WEEKLY\n")));
        CalendarService::addCalendar(u"second"_s, u"Lessons"_s, calendarText(lesson("Zoom - Cleo")));
        CalendarService::addCalendar(u"disabled"_s, u"Off"_s, calendarText(lesson("Zoom - Never")), false);
        m_service = std::make_unique<CalendarService>();
    }

    void cleanupTestCase() { m_service.reset(); }

    void init()
    {
        m_room = std::make_unique<CalendarRoom>();
        m_room->startOnAll();
    }

    void cleanup()
    {
        m_room->stop();
        for (const auto part : {CalendarService::Part::registry, CalendarService::Part::factory}) {
            if (m_service->isRunning(part)) {
                m_service->signal(part, SIGCONT);
            }
        }
        m_room.reset();
    }

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
        m_service->signal(CalendarService::Part::factory, SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(CalendarService::Part::factory), 5000);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(load().size(), 3);
        QVERIFY(timer.elapsed() < limit);
        QVERIFY(logged(u"calendar opened again"_s) > 0);
    }

    void aServiceKilledDuringALoadKeepsTheLessons()
    {
        QCOMPARE(load().size(), 3);
        for (int number = 0; number < 10; ++number) {
            auto loading = beginLoad();
            m_service->signal(CalendarService::Part::factory, SIGKILL);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(titles(QCoro::waitFor(std::move(loading))).size(), 3);
            QVERIFY(timer.elapsed() < limit);
            QCOMPARE(load().size(), 3);
        }
        QVERIFY(logged(u"calendar opened again"_s) + logged(u"did not answer"_s) > 0);
    }

    void aServiceThatHangsKeepsTheLessonsAndIsLoggedOnce()
    {
        QCOMPARE(load().size(), 3);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        EventLoopWatch watch;
        for (int number = 0; number < 2; ++number) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));
            QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
        }
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
        QCOMPARE(logged(u"calendar did not answer name=\"Lessons\""_s), 1);
        m_service->signal(CalendarService::Part::factory, SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(
            (static_cast<void>(load()), logged(u"calendar answers again name=\"Lessons\""_s)), 1, 20000);
    }

    void theMemoryStandsInForSevenDays()
    {
        QCOMPARE(load().size(), 3);
        QTRY_COMPARE(m_room->memoryFiles().size(), 2);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        // Ben's lesson is weekly.
        QCOMPARE(load(7), QStringList{u"Zoom - Ben"_s});
        QVERIFY(load(8).value(0).startsWith(u"failed"_s));
    }

    void aServiceThatHangsFromTheStartTimesOut()
    {
        QVERIFY(m_service->process(CalendarService::Part::factory) > 0);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(load().first().startsWith(u"failed"_s));
        QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(m_room->store().authorizationStatus(), CalendarAuthorization::notDetermined);
        m_service->signal(CalendarService::Part::factory, SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(load().size(), 3, 20000);
    }

    void withAFolderAServiceThatHangsOnlyDelaysTheLoad()
    {
        m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Bea"));
        QVERIFY(m_service->process(CalendarService::Part::factory) > 0);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(load(), QStringList{u"Zoom - Bea"_s});
        QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
    }

    void loadsDoNotPileUpWhileTheServiceHangs()
    {
        QCOMPARE(load().size(), 3);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        std::vector<decltype(beginLoad())> calls;
        const int before = threadCount();
        int most = 0;
        // Four loads a second for twelve seconds: some overlap, all end, and threads do not accumulate.
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 12'000) {
            calls.push_back(beginLoad());
            const qint64 next = timer.elapsed() + 250;
            QTRY_VERIFY_WITH_TIMEOUT(timer.elapsed() >= next, 1000);
            most = std::max(most, threadCount());
        }
        for (auto &call : calls) {
            QCOMPARE(titles(QCoro::waitFor(call)).size(), 3);
        }
        QVERIFY2(most - before < 20, qPrintable(u"%1 threads, before %2"_s.arg(most).arg(before)));
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

    void aRegistryKilledBetweenLoadsKeepsTheLessons()
    {
        QCOMPARE(load().size(), 3);
        m_service->signal(CalendarService::Part::registry, SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(!m_service->isRunning(CalendarService::Part::registry), 5000);
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(load().size(), 3);
        }
    }

    void theMemoryStandsInForARegistryThatHangsFromTheStart()
    {
        QCOMPARE(load().size(), 3);
        QTRY_COMPARE(m_room->memoryFiles().size(), 2);
        m_room->startOnAll();
        m_service->signal(CalendarService::Part::registry, SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));
        QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
        m_service->signal(CalendarService::Part::registry, SIGCONT);
    }

    // Keep this test last: the library waits half a minute for its call to a hanging registry.
    void aRegistryThatHangsTimesOutAndAnswersLater()
    {
        QVERIFY(m_service->process(CalendarService::Part::registry) > 0);
        m_service->signal(CalendarService::Part::registry, SIGSTOP);
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            QVERIFY(load().first().startsWith(u"failed"_s));
            QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
        }
        QCOMPARE(logged(u"calendar service did not answer"_s), 1);
        m_service->signal(CalendarService::Part::registry, SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(load().size(), 3, 40000);
    }
};

QUILLET_TEST(CalendarServiceTest, runTest<CalendarServiceTest>);
#include "CalendarServiceTest.moc"
