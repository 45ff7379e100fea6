// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "tests/support/CalendarService.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The store of a machine without a calendar service, and of one without a session bus.
class CalendarAbsenceTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<EventStore> m_store;
    const DateInterval m_day{dateSince1970(1747180800),
                             dateSince1970(1747180800 + 86400)}; // 14 May 2025, UTC

    void writeLesson()
    {
        QVERIFY(QDir().mkpath(m_room->filePath(u"folder"_s)));
        QFile file(m_room->filePath(u"folder/a.ics"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(calendarText("BEGIN:VEVENT\nUID:a\nDTSTART:20250514T120000Z\nDTEND:"
                                "20250514T123000Z\nSUMMARY:Zoom - Anna\nEND:VEVENT\n"));
    }

    void useBus(bool isThere)
    {
        if (!isThere) {
            qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        } else {
            if (!m_bus) {
                m_bus = std::make_unique<PrivateBus>();
            }
            qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toUtf8());
        }
    }

    void forBoth()
    {
        QTest::addColumn<bool>("hasBus");
        // Without a bus first: once there is one, the library keeps to it.
        QTest::newRow("no session bus") << false;
        QTest::newRow("a bus without the service") << true;
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->path());
        m_store = makeLinuxEventStore(*m_log, {m_room->filePath(u"folder"_s)}, m_room->filePath(u"memory"_s));
    }

    void cleanup()
    {
        m_store.reset();
        m_log.reset();
        m_room.reset();
    }

    void cleanupTestCase() { m_bus.reset(); }

    void withoutAFolderAccessIsDenied_data() { forBoth(); }
    void withoutAFolderAccessIsDenied()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QElapsedTimer timer;
        timer.start();
        const auto granted = QCoro::waitFor(m_store->requestFullAccessToEvents());
        QVERIFY(granted.has_value());
        QVERIFY(!*granted);
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(m_store->authorizationStatus(), CalendarAuthorization::notDetermined);
    }

    void aFolderMadeLaterGrantsAccess_data() { forBoth(); }
    void aFolderMadeLaterGrantsAccess()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QVERIFY(!QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(true));
        writeLesson();
        QVERIFY(QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(false));
        QCOMPARE(m_store->authorizationStatus(), CalendarAuthorization::fullAccess);
    }

    void theLessonsOfTheFolderAreShown_data() { forBoth(); }
    void theLessonsOfTheFolderAreShown()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        writeLesson();
        QVERIFY(QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(false));
        for (int round = 0; round < 3; ++round) {
            const auto events = QCoro::waitFor(m_store->events(m_day));
            QVERIFY(events.has_value());
            QCOMPARE(events->size(), std::size_t{1});
        }
        QCOMPARE(m_log->latestLines().filter(u"calendar service absent"_s).size(), 1);
    }

    void requestsOnceASecondAreAnsweredAtOnce_data() { forBoth(); }
    void requestsOnceASecondAreAnsweredAtOnce()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QElapsedTimer timer;
        timer.start();
        for (int round = 0; round < 50; ++round) {
            QVERIFY(!QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(true));
        }
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    }

    // The last two: they end the bus.
    void aBusThatHangsIsAnErrorInTime()
    {
        useBus(true);
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        const auto granted = QCoro::waitFor(m_store->requestFullAccessToEvents());
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGCONT);
        QVERIFY(!granted.value_or(false));
        QVERIFY(timer.elapsed() < 5000);
    }

    void theEndOfTheBusIsNotTheEndOfTheProgram()
    {
        useBus(true);
        QVERIFY(!QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(true));
        m_bus->stop();
        writeLesson();
        QVERIFY(QCoro::waitFor(m_store->requestFullAccessToEvents()).value_or(false));
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            const auto events = QCoro::waitFor(m_store->events(m_day));
            QVERIFY(timer.elapsed() < 5000);
            QVERIFY(events.has_value());
            QCOMPARE(events->size(), std::size_t{1});
        }
    }
};

QUILLET_TEST(CalendarAbsenceTest, runTest<CalendarAbsenceTest>);
#include "CalendarAbsenceTest.moc"
