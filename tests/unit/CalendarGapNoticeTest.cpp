// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarGapNotice.h"

#include "tests/support/FakeUserNotificationCenter.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct CalendarGapNoticeFixture {
    ManualClock clock{at("09:00:00")};
    QTemporaryDir library;
    DebugLogService logger{library.path()};
    CalendarMonitor monitor;
    FakeUserNotificationCenter center;
    std::unique_ptr<CalendarGapNotice> notice = std::make_unique<CalendarGapNotice>(monitor, center, logger);

    /// Of the calendars A, B and C, those named in `silent` have gaps; the others answer.
    void setSilent(const QString &silent)
    {
        std::vector<CalendarStatus> calendars;
        for (const QChar name : u"ABC"_s) {
            CalendarStatus status;
            status.identifier = name;
            status.name = name;
            const bool isSilent = silent.contains(name);
            status.condition =
                isSilent ? CalendarStatus::Condition::silent : CalendarStatus::Condition::answers;
            calendars.push_back(status);
        }
        monitor.setCalendars(std::move(calendars));
    }

    [[nodiscard]] QStringList bodies() const
    {
        QStringList bodies;
        for (const NotificationRequest &request : center.requests) {
            bodies.append(request.body.section(u". "_s, 0, 0));
        }
        return bodies;
    }
};

constexpr Seconds fewMilliseconds{0.01};

} // namespace

class CalendarGapNoticeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aGapOfFiveMinutesIsReportedOnceAndQuietly()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{300} - fewMilliseconds);
        QVERIFY(f.center.requests.empty());
        f.clock.advance(2 * fewMilliseconds);
        QCOMPARE(f.bodies(), QStringList{u"No answer from the calendar “A”"_s});
        const NotificationRequest request = f.center.requests.front();
        QVERIFY(request.isQuiet);
        QVERIFY(!request.identifier.startsWith(u"quillet.backup."_s));
        QVERIFY(request.fireDate > currentDate());
        QVERIFY(request.fireDate <= currentDate() + Seconds{2});
        QVERIFY(request.expirationDate > request.fireDate);
        QCOMPARE(request.title, u"A calendar is missing"_s);
        f.clock.advance(Seconds{86400});
        QCOMPARE(f.bodies().size(), 1);
    }

    void theNotificationExpiresAfterAQuarterOfAnHour()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{301});
        QCOMPARE(f.center.requests.size(), std::size_t{1});
        const NotificationRequest request = f.center.requests.front();
        // One to two seconds from now, on a whole second.
        QCOMPARE(request.fireDate, at("09:05:02"));
        QCOMPARE(request.expirationDate, at("09:20:02"));
        QCOMPARE(request.identifier, u"quillet.calendar-gap."_s + QString::number(static_cast<qint64>(
                                                                      secondsSince1970(at("09:05:02")))));
        QCOMPARE(request.categoryIdentifier, u"quillet.calendar"_s);
        QVERIFY(f.logger.latestLines().last().endsWith(u"Z calendar gap told"_s));
    }

    void aShorterGapIsNotReported()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{299});
        f.setSilent({});
        f.clock.advance(Seconds{3600});
        QVERIFY(f.center.requests.empty());
    }

    void theFiveMinutesMustBeUninterrupted()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{200});
        f.setSilent({});
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{299});
        QVERIFY(f.center.requests.empty());
        f.clock.advance(Seconds{2});
        QCOMPARE(f.bodies().size(), 1);
    }

    void aRecurringGapIsReportedAgain()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{400});
        f.setSilent({});
        f.clock.advance(Seconds{60});
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{301});
        QCOMPARE(f.bodies().size(), 2);
    }

    void calendarsThatFailTogetherShareOneNotification()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{5});
        f.setSilent(u"AB"_s);
        f.clock.advance(Seconds{299});
        QVERIFY(f.center.requests.empty());
        f.clock.advance(Seconds{2});
        QCOMPARE(f.bodies(), QStringList{u"No answer from the calendars “A” and “B”"_s});
        f.clock.advance(Seconds{3600});
        QCOMPARE(f.bodies().size(), 1);
    }

    void aRecoveredCalendarDoesNotDelayTheOther()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{50});
        f.setSilent(u"AB"_s);
        f.clock.advance(Seconds{260});
        f.setSilent(u"A"_s);
        QCOMPARE(f.bodies(), QStringList{u"No answer from the calendar “A”"_s});
    }

    void aCalendarThatFailsLaterIsReportedSeparately()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{120});
        f.setSilent(u"AB"_s);
        f.clock.advance(Seconds{181});
        QCOMPARE(f.bodies(), QStringList{u"No answer from the calendar “A”"_s});
        f.clock.advance(Seconds{120});
        QCOMPARE(f.bodies().last(), u"No answer from the calendar “B”"_s);
    }

    void otherCalendarChangesDoNotRestartTheWait()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        for (int minute = 0; minute < 4; ++minute) {
            f.clock.advance(Seconds{60});
            f.monitor.setEvents(std::vector<CalendarEvent>(static_cast<std::size_t>(minute % 2)));
        }
        f.clock.advance(Seconds{61});
        QCOMPARE(f.bodies().size(), 1);
    }

    void aClockChangeMakesNoGapLonger()
    {
        CalendarGapNoticeFixture f;
        f.setSilent(u"A"_s);
        f.clock.setWallClock(at("12:00:00"));
        f.monitor.setEvents(std::vector<CalendarEvent>(1));
        QVERIFY(f.center.requests.empty());
    }

    void withNotificationsOffNoneIsAdded()
    {
        CalendarGapNoticeFixture f;
        f.center.authorization = false;
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{301});
        QVERIFY(f.center.requests.empty());
        QVERIFY(f.logger.latestLines().last().endsWith(u"notifications are not granted"_s));
    }

    void aFailureIsLogged()
    {
        CalendarGapNoticeFixture f;
        f.center.addFailure = Failure{u"no agent"_s};
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{301});
        QVERIFY(f.logger.latestLines().last().endsWith(u"calendar gap not told error=no agent"_s));
    }

    void destroyingItWhileTheAgentHangsIsHarmless()
    {
        CalendarGapNoticeFixture f;
        f.center.hold();
        f.setSilent(u"A"_s);
        f.clock.advance(Seconds{301});
        f.notice.reset();
        f.center.release();
        QVERIFY(f.center.requests.empty());
    }
};

QUILLET_TEST(CalendarGapNoticeTest, runTest<CalendarGapNoticeTest>);
#include "CalendarGapNoticeTest.moc"
