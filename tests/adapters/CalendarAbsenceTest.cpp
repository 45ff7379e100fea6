// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// In milliseconds: a load takes at most five seconds, doubled here for a busy machine.
static constexpr qint64 absenceLimit = 10'000;

/// The store on a machine without a calendar service, and on one without a session bus.
class CalendarAbsenceTest : public QObject {
    Q_OBJECT

    std::unique_ptr<CalendarRoom> m_room;
    std::unique_ptr<PrivateBus> m_bus;

    [[nodiscard]] EventStore &store() const { return m_room->store(); }
    void writeLesson() const { m_room->writeEvents(u"a.ics"_s, lesson("Zoom - Anna")); }

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
        // Without a bus first: the library keeps the first bus that it finds.
        QTest::newRow("no session bus") << false;
        QTest::newRow("a bus without the service") << true;
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<CalendarRoom>();
        m_room->startOnAll();
    }

    void cleanup() { m_room.reset(); }

    void cleanupTestCase() { m_bus.reset(); }

    void withoutAFolderAccessIsDenied_data() { forBoth(); }
    void withoutAFolderAccessIsDenied()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QElapsedTimer timer;
        timer.start();
        const auto granted = QCoro::waitFor(store().requestFullAccessToEvents());
        QVERIFY(granted.has_value());
        QVERIFY(!*granted);
        QVERIFY(timer.elapsed() < absenceLimit);
        QCOMPARE(store().authorizationStatus(), CalendarAuthorization::notDetermined);
    }

    void aFolderCreatedLaterGrantsAccess_data() { forBoth(); }
    void aFolderCreatedLaterGrantsAccess()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QVERIFY(!QCoro::waitFor(store().requestFullAccessToEvents()).value_or(true));
        writeLesson();
        QVERIFY(QCoro::waitFor(store().requestFullAccessToEvents()).value_or(false));
        QCOMPARE(store().authorizationStatus(), CalendarAuthorization::fullAccess);
    }

    void theLessonsOfTheFolderAreShown_data() { forBoth(); }
    void theLessonsOfTheFolderAreShown()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        writeLesson();
        QVERIFY(QCoro::waitFor(store().requestFullAccessToEvents()).value_or(false));
        for (int round = 0; round < 3; ++round) {
            const auto events = QCoro::waitFor(store().events(testDay()));
            QVERIFY(events.has_value());
            QCOMPARE(events->size(), std::size_t{1});
        }
        QCOMPARE(m_room->logged(u"calendar service absent"_s), 1);
    }

    void repeatedRequestsAreAnsweredAtOnce_data() { forBoth(); }
    void repeatedRequestsAreAnsweredAtOnce()
    {
        QFETCH(bool, hasBus);
        useBus(hasBus);
        QElapsedTimer timer;
        timer.start();
        for (int round = 0; round < 50; ++round) {
            QVERIFY(!QCoro::waitFor(store().requestFullAccessToEvents()).value_or(true));
        }
        QVERIFY2(timer.elapsed() < absenceLimit, qPrintable(QString::number(timer.elapsed())));
    }

    // Keep these two tests last, since they stop the bus.
    void aBusThatHangsTimesOut()
    {
        useBus(true);
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        const auto granted = QCoro::waitFor(store().requestFullAccessToEvents());
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGCONT);
        QVERIFY(!granted.value_or(false));
        QVERIFY(timer.elapsed() < absenceLimit);
    }

    void theStoreSurvivesTheEndOfTheBus()
    {
        useBus(true);
        QVERIFY(!QCoro::waitFor(store().requestFullAccessToEvents()).value_or(true));
        m_bus->stop();
        writeLesson();
        QVERIFY(QCoro::waitFor(store().requestFullAccessToEvents()).value_or(false));
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            const auto events = QCoro::waitFor(store().events(testDay()));
            QVERIFY(timer.elapsed() < absenceLimit);
            QVERIFY(events.has_value());
            QCOMPARE(events->size(), std::size_t{1});
        }
    }
};

QUILLET_TEST(CalendarAbsenceTest, runTest<CalendarAbsenceTest>);
#include "CalendarAbsenceTest.moc"
