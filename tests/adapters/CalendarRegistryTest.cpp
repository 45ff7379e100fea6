// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarServiceFixture.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// A registry of calendars that is killed or stops answering.
class CalendarRegistryTest final : public CalendarServiceFixture {
    Q_OBJECT

private Q_SLOTS:
    void aRegistryKilledBetweenLoadsKeepsTheLessons()
    {
        QCOMPARE(load().size(), 3);
        m_service->kill(CalendarService::Part::registry);
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

QUILLET_TEST(CalendarRegistryTest, runTest<CalendarRegistryTest>);
#include "CalendarRegistryTest.moc"
