// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarServiceFixture.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <vector>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

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

/// A calendar service that stops answering.
class CalendarServiceHangTest final : public CalendarServiceFixture {
    Q_OBJECT

private Q_SLOTS:
    void aServiceThatHangsKeepsTheLessonsAndIsLoggedOnce()
    {
        QCOMPARE(load().size(), 3);
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        EventLoopWatch watch;
        for (int number = 0; number < 2; ++number) {
            wishForNews();
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

    void aListOfCalendarsThatComesLateIsNews()
    {
        m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Bea"));
        QVERIFY(m_service->process(CalendarService::Part::registry) > 0);
        m_service->signal(CalendarService::Part::registry, SIGSTOP);
        const QSignalSpy news(&m_room->monitor(), &CalendarMonitor::newsArrived);
        QCOMPARE(load(), QStringList{u"Zoom - Bea"_s});
        QCOMPARE(news.count(), 0);
        m_service->signal(CalendarService::Part::registry, SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(news.count(), 1, 20000);
        QCOMPARE(load().size(), 4);
        QCOMPARE(news.count(), 1);
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
            wishForNews();
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
};

QUILLET_TEST(CalendarServiceHangTest, runTest<CalendarServiceHangTest>);
#include "CalendarServiceHangTest.moc"
