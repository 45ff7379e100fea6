// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestProgram.h"
#include "tests/unit/MenuBarViewModelFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The backups of the loaded lessons, with a notification centre that hangs, too.
class MenuBarViewModelBackupsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachReloadSchedulesBackupsForTheWholeDay()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        QCOMPARE(f.center.requests.size(), std::size_t{5});
        f.store.answer = std::vector{anna(), sampleLesson(u"Ben"_s, at("10:30:00"), minutes(25))};
        f.clock.advance(minutes(1));
        QCOMPARE(f.center.requests.size(), std::size_t{10});
        f.store.answer = std::vector<Lesson>();
        f.clock.advance(minutes(1));
        QVERIFY(f.center.requests.empty());
        QVERIFY(f.logged().contains(u"scheduled system backup notifications lessons=0"_s));
    }

    void aFailedReloadLeavesTheBackupsAlone()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        const auto calls = f.center.calls;
        f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        f.clock.advance(minutes(3));
        QCOMPARE(f.center.calls, calls);
        QCOMPARE(f.center.requests.size(), std::size_t{5});
    }

    void failedBackupsDoNotFailTheReload()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.center.authorization = std::unexpected(Failure{u"no bus"_s});
        f.start({anna()});
        QVERIFY(!f.model->lastErrorMessage());
        QCOMPARE(f.presentedMessages(), QStringList{u"4 min before next lesson"_s});
        QVERIFY(f.logged().contains(u"system notification scheduling failed error=no bus"_s));
    }

    void theFirstEvaluationWaitsForTheBackups()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.center.hold();
        f.start({anna()});
        QVERIFY(f.presenter.presented.empty());
        f.center.release();
        QCOMPARE(f.presentedMessages(), QStringList{u"4 min before next lesson"_s});
    }

    void aHangingNotificationCentreDelaysNoBanner()
    {
        MenuBarViewModelFixture f("09:50:17");
        f.start({anna()});
        f.center.hold();
        Lesson moved = anna();
        moved.startTime += minutes(1);
        f.store.answer = std::vector{moved};
        f.clock.advanceTo(at("10:30:00"));
        QVERIFY(f.center.waitingCount() > 0);
        QCOMPARE(f.presentedTimes(),
                 (QStringList{u"09:57:00"_s, u"10:00:00"_s, u"10:00:30"_s, u"10:00:40"_s, u"10:25:00"_s}));
        QCOMPARE(f.store.calls, 40); // reloads continue, too: one a minute
    }

    void aChangeoverDuringAHangingReloadIsAnnouncedByTheNextTick()
    {
        MenuBarViewModelFixture f("09:50:00");
        f.start({anna()});
        f.center.hold();
        Lesson moved = anna();
        moved.startTime += minutes(1);
        f.store.answer = std::vector{moved};
        f.clock.advanceTo(at("10:30:00"));
        QCOMPARE(f.presentedTimes(),
                 (QStringList{u"09:57:01"_s, u"10:00:01"_s, u"10:00:30"_s, u"10:00:40"_s, u"10:25:01"_s}));
    }

    void aNotificationCentreThatHangsAtTheStartDelaysBannersByAtMostASecond()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.center.hold();
        f.start({anna()});
        f.clock.advance(minutes(5));
        QCOMPARE(f.presenter.presented.front().moment, at("09:57:01"));
        QCOMPARE(f.presentedMessages(),
                 (QStringList{u"4 min before next lesson"_s, u"1 minute before next lesson"_s,
                              u"Join Zoom now"_s, u"START NOW - 20 seconds remaining"_s}));
        QCOMPARE(f.presenter.presented.back().moment, at("09:59:40"));
    }

    void theHeartbeatStartsOnceHoweverLongTheFirstBackupsTake()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.center.hold();
        f.start({anna()});
        f.clock.advance(Seconds{10.5});
        f.center.release();
        const QSignalSpy action(f.model.get(), &MenuBarViewModel::currentActionChanged);
        f.clock.advance(Seconds{10});
        QCOMPARE(action.count(), 10);
    }

    void pendingBackupsDoNotTouchADestroyedModel()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.center.hold();
        f.start({anna()});
        f.model.reset();
        f.center.release();
        f.clock.advance(Seconds{20});
        QVERIFY(f.presenter.presented.empty());
        QCOMPARE(f.center.requests.size(), std::size_t{4});
        QCOMPARE(f.store.calls, 1);
    }
};

QUILLET_TEST(MenuBarViewModelBackupsTest, runTest<MenuBarViewModelBackupsTest>);
#include "MenuBarViewModelBackupsTest.moc"
