// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarServiceFixture.h"
#include "tests/support/ManualClock.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>
#include <chrono>
#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// When a calendar of the service is asked, and when its last answer is known to be still right. A stopped
/// service shows the difference: it is noticed by those who ask it.
class KnownAnswerTest final : public CalendarServiceFixture {
    Q_OBJECT

    ManualClock m_clock{testDay().start + std::chrono::hours(9)};

    void stopService() { m_service->signal(CalendarService::Part::factory, SIGSTOP); }

    [[nodiscard]] bool hasFailing() const
    {
        return std::ranges::any_of(m_room->monitor().calendars(), [](const CalendarStatus &calendar) {
            return calendar.condition != CalendarStatus::Condition::answers;
        });
    }

    /// Loads until an answer is kept: changes that the service reports late may take a second load.
    void settle()
    {
        QTRY_VERIFY_WITH_TIMEOUT((static_cast<void>(load()), m_room->memoryFiles().size() == 2), 20000);
        QCOMPARE(load(), lessons);
    }

    const QStringList lessons{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s};

private Q_SLOTS:
    void aCalendarWithoutAChangeIsNotAskedAgain()
    {
        settle();
        stopService();
        QCOMPARE(load(), lessons);
        QCOMPARE(logged(u"did not answer"_s), 0);
    }

    void whoWishesForNewsHasItAsked()
    {
        settle();
        stopService();
        wishForNews();
        QCOMPARE(load(), lessons);
        QCOMPARE(logged(u"calendar did not answer"_s), 2);
    }

    void whileItsStateIsViewedEveryLoadAsks()
    {
        settle();
        stopService();
        {
            const QObject viewer;
            const QObject another;
            m_room->monitor().addViewer(viewer);
            m_room->monitor().addViewer(another);
            QCOMPARE(load(), lessons);
            QCOMPARE(logged(u"calendar did not answer"_s), 2);
            m_service->signal(CalendarService::Part::factory, SIGCONT);
            QTRY_VERIFY_WITH_TIMEOUT((static_cast<void>(load()), !hasFailing()), 20000);
            stopService();
            static_cast<void>(load());
            QVERIFY(hasFailing());
            m_service->signal(CalendarService::Part::factory, SIGCONT);
            QTRY_VERIFY_WITH_TIMEOUT((static_cast<void>(load()), !hasFailing()), 20000);
        }
        QCOMPARE(load(), lessons);
        stopService();
        QCOMPARE(load(), lessons);
        QVERIFY(!hasFailing());
    }

    void aRegularRefreshDoesNotAskLocalCalendars()
    {
        settle();
        stopService();
        m_room->store().refresh(CalendarRefresh::regular);
        QCOMPARE(load(), lessons);
        QCOMPARE(logged(u"did not answer"_s), 0);
    }

    void afterFiveMinutesItIsAskedInAnyCase()
    {
        settle();
        stopService();
        m_clock.advance(Seconds{299});
        QCOMPARE(load(), lessons);
        QCOMPARE(logged(u"did not answer"_s), 0);
        m_clock.advance(Seconds{1});
        QCOMPARE(load(), lessons);
        QCOMPARE(logged(u"calendar did not answer"_s), 2);
    }

    void anotherDayIsAskedFor()
    {
        settle();
        QCOMPARE(load(7), QStringList{u"Zoom - Ben"_s});
        QCOMPARE(load(), lessons);
    }

    void theStatusTellsWhenItWasAsked()
    {
        settle();
        const Date asked = m_room->monitor().calendars().front().lastRead.value();
        m_clock.advance(Seconds{60});
        QCOMPARE(load(), lessons);
        QCOMPARE(m_room->monitor().calendars().front().lastRead, asked);
        m_clock.advance(Seconds{240});
        QCOMPARE(load(), lessons);
        QVERIFY(m_room->monitor().calendars().front().lastRead > asked);
    }
};

QUILLET_TEST(KnownAnswerTest, runTest<KnownAnswerTest>);
#include "KnownAnswerTest.moc"
