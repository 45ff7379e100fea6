// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MenuBarViewModel.h"

#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct MenuBarViewModelFixture : ViewModelFixture {
    using ViewModelFixture::ViewModelFixture;

    [[nodiscard]] QStringList presentedMessages() const
    {
        QStringList messages;
        for (const auto &presented : presenter.presented) {
            messages.append(presented.action.message);
        }
        return messages;
    }

    /// When they were presented, as "09:56:00".
    [[nodiscard]] QStringList presentedTimes() const
    {
        QStringList times;
        for (const auto &presented : presenter.presented) {
            times.append(descriptionText(presented.moment).sliced(11, 8));
        }
        return times;
    }

    [[nodiscard]] QStringList logged() const
    {
        QStringList messages;
        for (const QString &line : logger.latestLines()) {
            messages.append(line.sliced(25));
        }
        return messages;
    }
};

Lesson anna()
{
    return sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25));
}

} // namespace

class MenuBarViewModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startingDuringPrepareRaisesTheBannerAtTheFirstEvaluation()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        QCOMPARE(f.presentedMessages(), QStringList{u"4 min before next lesson"_s});
        QCOMPARE(f.model->menuTitle(), u"Prepare"_s);
    }

    void startingInTheMiddleOfALessonRaisesNothing()
    {
        MenuBarViewModelFixture f("10:10:00");
        f.start({anna()});
        QVERIFY(f.presenter.presented.empty());
        QCOMPARE(f.model->menuTitle(), u"Anna"_s);
        QCOMPARE(f.model->currentAction().state, LessonState::teaching);
    }

    void withoutLessonsTheTitleIsTheProductName()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({});
        QCOMPARE(f.model->menuTitle(), u"Quillet"_s);
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"None"_s);
        QVERIFY(!f.model->debugSnapshot().secondsUntilNextEvent);
        QCOMPARE(f.model->debugSnapshot().loadedLessonCount, 0);
        QVERIFY(!f.model->debugSnapshot().currentLessonDescription);
        QVERIFY(!f.model->debugSnapshot().nextLessonDescription);
        QVERIFY(f.model->debugSnapshot().lastCalendarReloadDescription == u"No lessons found today"_s);
    }

    void twoHeartbeatsInOnePhaseRaiseOneBanner()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        f.clock.advance(Seconds{50});
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
    }

    void aReloadOfTheSameLessonsRaisesNothingNew()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        f.store.answer = std::vector{anna()}; // with a new identifier
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QCOMPARE(f.store.calls, 2);
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
    }

    void theTwoStartNowActionsOfOneLessonRaiseOneBanner()
    {
        MenuBarViewModelFixture f("09:59:50");
        f.start({anna()});
        f.clock.advance(Seconds{14});
        QCOMPARE(f.model->currentAction().message, u"START NOW"_s);
        QCOMPARE(f.presentedMessages(), QStringList{u"START NOW - 20 seconds remaining"_s});
    }

    void aTestNotificationWithoutLessonsIsUrgentAndSuppressesNothing()
    {
        MenuBarViewModelFixture f("09:56:30");
        f.start({});
        f.model->testNotification();
        QCOMPARE(f.presentedMessages(), QStringList{u"Notification system check"_s});
        const TeachingAction &action = f.presenter.presented.front().action;
        QCOMPARE(action.priority, TeachingActionPriority::urgent);
        QCOMPARE(action.state, LessonState::joinPlatform);
        QVERIFY(!action.lesson && !action.nextLesson && !action.nextTransitionDate);
        QVERIFY(!f.model->debugSnapshot().lastNotificationDescription);
        QCOMPARE(f.logged().last(), u"test notification requested message=\"Notification system check\""_s);
    }

    void aTestNotificationDoesNotSuppressTheRealOne()
    {
        MenuBarViewModelFixture f("09:59:20");
        f.start({anna()});
        f.model->testNotification();
        QCOMPARE(f.presentedMessages(), (QStringList{u"1 minute before next lesson"_s, u"Join Zoom now"_s}));
        f.clock.advance(Seconds{15});
        QCOMPARE(f.presentedMessages(),
                 (QStringList{u"1 minute before next lesson"_s, u"Join Zoom now"_s, u"Join Zoom now"_s}));
        QVERIFY(f.model->debugSnapshot().lastNotificationDescription == u"Join Zoom now"_s);
    }

    void aFailedFirstLoadIsRetriedEverySecond()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.store.answer = std::unexpected(LessonScheduleError(CalendarAccessError::denied));
        spawn(f.model->start());
        f.clock.advance(Seconds{0});
        QCOMPARE(f.store.calls, 2); // the first load, and the first tick's
        f.clock.advance(Seconds{5});
        QCOMPARE(f.store.calls, 7);
        QVERIFY(f.model->lastErrorMessage() == u"Could not load today's lessons."_s);
        QVERIFY(f.logged().contains(
            u"calendar reload failed error=Calendar access is required to read today's lessons."_s));
        f.store.answer = std::vector{anna()};
        f.clock.advance(Seconds{1});
        QVERIFY(!f.model->lastErrorMessage());
        f.clock.advance(Seconds{10});
        QCOMPARE(f.store.calls, 8);
        QCOMPARE(f.model->menuTitle(), u"Anna"_s);
    }

    void lessonsAreReloadedOnceAMinute()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        QCOMPARE(f.store.calls, 1);
        f.clock.advance(Seconds{59.5});
        QCOMPARE(f.store.calls, 1);
        f.clock.advance(Seconds{1});
        QCOMPARE(f.store.calls, 2);
        f.clock.advance(minutes(10));
        QCOMPARE(f.store.calls, 12);
    }

    void duringALoadEachTickStartsAnother()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        f.store.delay = Seconds{4};
        f.clock.advance(Seconds{59.5});
        QCOMPARE(f.store.calls, 1);
        f.clock.advance(Seconds{4}); // due at the 60th second, still running in the 63rd
        QCOMPARE(f.store.calls, 5);
        f.clock.advance(Seconds{10}); // ended in the 64th; loads started before then end without another
        QCOMPARE(f.store.calls, 5);
    }

    void aChangeoverDuringALoadIsAnnouncedWhenTheLoadEnds()
    {
        MenuBarViewModelFixture f("09:58:01");
        f.start({anna()});
        f.store.delay = Seconds{4};
        // The load began in the 61st second, a second after the changeover.
        f.clock.advanceTo(at("09:59:04.5"));
        QCOMPARE(f.presentedMessages(),
                 (QStringList{u"4 min before next lesson"_s, u"1 minute before next lesson"_s}));
        QCOMPARE(f.presenter.presented.back().moment, at("09:59:00"));

        MenuBarViewModelFixture g("09:58:00");
        g.start({anna()});
        g.store.delay = Seconds{4};
        // The load began at the changeover.
        g.clock.advanceTo(at("09:59:03.5"));
        QCOMPARE(g.presentedMessages(), QStringList{u"4 min before next lesson"_s});
        g.clock.advanceTo(at("09:59:04.5"));
        QCOMPARE(g.presentedMessages(),
                 (QStringList{u"4 min before next lesson"_s, u"1 minute before next lesson"_s}));
    }

    void aClockSetBackDelaysTheNextReloadAndNothingElse()
    {
        MenuBarViewModelFixture f("10:30:00");
        f.start({sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))});
        f.clock.setWallClock(at("09:55:30"));
        f.clock.advance(minutes(5));
        QCOMPARE(f.store.calls, 1);
        QCOMPARE(f.presentedMessages(),
                 (QStringList{u"4 min before next lesson"_s, u"1 minute before next lesson"_s,
                              u"Join Zoom now"_s, u"START NOW - 20 seconds remaining"_s}));
        f.clock.setWallClock(at("10:31:00"));
        f.clock.advance(Seconds{1});
        QCOMPARE(f.store.calls, 2);
    }

    void aTestNotificationKeepsTheSuppression()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        f.model->testNotification();
        f.store.answer = std::vector<Lesson>();
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{1});
        f.store.answer = std::vector{anna()};
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{1});
        QCOMPARE(f.presentedMessages(), (QStringList{u"4 min before next lesson"_s, u"Join Zoom now"_s}));
    }

    void aFailedReloadKeepsTheLessonsAndTheirBanners()
    {
        MenuBarViewModelFixture f("09:55:00");
        f.start({anna()});
        f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        f.clock.advance(minutes(6));
        QCOMPARE(f.model->lessons().size(), std::size_t{1});
        QVERIFY(f.model->lastErrorMessage() == u"Could not load today's lessons."_s);
        QVERIFY(f.model->debugSnapshot().lastCalendarReloadDescription == u"Calendar reload failed"_s);
        QCOMPARE(f.presentedMessages(),
                 (QStringList{u"4 min before next lesson"_s, u"1 minute before next lesson"_s,
                              u"Join Zoom now"_s, u"START NOW - 20 seconds remaining"_s}));
    }

    void aWholeLessonRaisesEachBannerOnceInItsSecond()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        f.clock.advance(minutes(120));
        QStringList seen;
        for (const auto &presented : f.presenter.presented) {
            seen.append(descriptionText(presented.moment).sliced(11, 8) + u' ' + presented.action.message);
        }
        QCOMPARE(seen,
                 (QStringList{u"09:56:00 4 min before next lesson"_s,
                              u"09:59:00 1 minute before next lesson"_s, u"09:59:30 Join Zoom now"_s,
                              u"09:59:40 START NOW - 20 seconds remaining"_s, u"10:24:00 Finish up Anna"_s}));
    }

    void aMovedLessonIsAnnouncedAgain()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        Lesson moved = anna();
        moved.startTime += Seconds{30};
        f.store.answer = std::vector{moved};
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QCOMPARE(f.presenter.presented.size(), std::size_t{2});
    }

    void returningToAStateForTheSameLessonRaisesNothing()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        f.store.answer = std::vector<Lesson>();
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{1});
        QCOMPARE(f.model->menuTitle(), u"Quillet"_s);
        f.store.answer = std::vector{anna()};
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{1});
        QCOMPARE(f.model->menuTitle(), u"Prepare"_s);
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
    }

    void theMenuTitleFollowsTheState()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        QStringList titles;
        QObject::connect(f.model.get(), &MenuBarViewModel::currentActionChanged, f.model.get(), [&] {
            if (titles.isEmpty() || titles.last() != f.model->menuTitle()) {
                titles.append(f.model->menuTitle());
            }
        });
        f.clock.advance(minutes(120));
        QCOMPARE(titles, (QStringList{u"Anna"_s, u"Prepare"_s, u"1 min"_s, u"Join now"_s, u"Start now"_s,
                                      u"Anna"_s, u"Wrap up"_s, u"Quillet"_s}));
    }

    void startingASecondTimeDoesNothing()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.start({anna()});
        spawn(f.model->start());
        f.clock.advance(Seconds{10});
        QCOMPARE(f.store.calls, 1);
        QCOMPARE(f.logged().count(u"app started"_s), 1);
    }

    void theStartIsLoggedInOrder()
    {
        MenuBarViewModelFixture f("09:57:00");
        f.start({anna()});
        QCOMPARE(
            f.logged(),
            (QStringList{u"app started"_s, u"calendar reload success lessons=1 window=today"_s,
                         u"scheduled system backup notifications lessons=1"_s,
                         u"notification should fire state=prepare message=\"4 min before next lesson\""_s}));
    }

    void thePropertiesArePublishedAtEveryReload()
    {
        MenuBarViewModelFixture f("09:00:00");
        const QSignalSpy lessons(f.model.get(), &MenuBarViewModel::lessonsChanged);
        const QSignalSpy error(f.model.get(), &MenuBarViewModel::lastErrorMessageChanged);
        const QSignalSpy action(f.model.get(), &MenuBarViewModel::currentActionChanged);
        const QSignalSpy snapshot(f.model.get(), &MenuBarViewModel::debugSnapshotChanged);
        f.start({anna()});
        QCOMPARE(lessons.count(), 1);
        QCOMPARE(error.count(), 1);
        QCOMPARE(action.count(), 2); // by the load, and by the first tick
        QCOMPARE(snapshot.count(), 2);
    }

    void theSnapshotDescribesTheCurrentState()
    {
        MenuBarViewModelFixture f("09:56:55");
        f.start(
            {anna(), sampleLesson(u"Ben"_s, at("10:25:00"), minutes(25), TeachingPlatform::onlineLesson)});
        f.clock.advance(Seconds{0});
        const DebugSnapshot expected{.currentTime = at("09:56:55"),
                                     .currentLessonDescription = u"Anna (Zoom)"_s,
                                     .nextLessonDescription = u"Anna (Zoom)"_s,
                                     .countdownDescription = u"2m 5s"_s,
                                     .engineState = LessonState::prepare,
                                     .secondsUntilNextEvent = 125.0,
                                     .lastNotificationDescription = u"4 min before next lesson"_s,
                                     .nextNotificationDescription = std::nullopt,
                                     .loadedLessonCount = 2,
                                     .lastCalendarReloadDescription = u"Loaded 2 lesson(s) for today"_s,
                                     .logPath = f.logger.logURL().toLocalFile()};
        QVERIFY(f.model->debugSnapshot() == expected);
        f.clock.advanceTo(at("09:58:30"));
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"30s"_s);
        f.clock.advanceTo(at("10:10:00"));
        QVERIFY(f.model->debugSnapshot().nextLessonDescription == u"Ben (Online Lesson)"_s);
    }

    void aTransitionInThePastIsInZeroSeconds()
    {
        MenuBarViewModelFixture f("09:55:00"); // idle, whose transition was six minutes before the start
        f.start({anna()});
        QVERIFY(f.model->debugSnapshot().secondsUntilNextEvent == 0.0);
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"0s"_s);
    }

    void anActionWithoutATransitionHasNoCountdown()
    {
        MenuBarViewModelFixture f("10:30:00");
        f.start({anna()});
        QVERIFY(!f.model->debugSnapshot().secondsUntilNextEvent);
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"None"_s);
        QCOMPARE(f.model->debugSnapshot().loadedLessonCount, 1);
    }

    void longCountdownsAreInMinutes()
    {
        MenuBarViewModelFixture f("08:39:00");
        f.start({anna()});
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"75m 0s"_s);
    }

    void beforeTheStartTheSnapshotIsEmpty()
    {
        const MenuBarViewModelFixture f("09:00:00");
        QCOMPARE(f.model->menuTitle(), u"Quillet"_s);
        QCOMPARE(f.model->currentAction().message, u"No lessons remaining"_s);
        QCOMPARE(f.model->debugSnapshot().countdownDescription, u"None"_s);
        QCOMPARE(f.model->debugSnapshot().logPath, f.logger.logURL().toLocalFile());
        QVERIFY(!f.model->debugSnapshot().lastCalendarReloadDescription);
        QCOMPARE(f.store.calls, 0);
    }

    void pendingWorkDoesNotTouchADestroyedModel()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.store.delay = Seconds{5};
        f.start({anna()});
        f.model.reset();
        f.clock.advance(Seconds{20});
        QCOMPARE(f.store.calls, 1);
    }

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

    void namesWithPercentSignsAreLoggedUnchanged()
    {
        MenuBarViewModelFixture f("10:24:30");
        f.start({sampleLesson(u"%1 \"Anna\" %2"_s, at("10:00:00"), minutes(25))});
        QCOMPARE(f.logged().last(),
                 u"notification should fire state=wrapUp message=\"Finish up %1 \"Anna\" %2\""_s);
    }

    void aNameCannotForgeALogLine()
    {
        const QString name = u"Ben\nforged\x7f\u202B"_s;
        MenuBarViewModelFixture f("10:24:30");
        f.start({sampleLesson(name, at("10:00:00"), minutes(25))});
        QCOMPARE(f.logged().last(),
                 u"notification should fire state=wrapUp message=\"Finish up Ben forged \""_s);
        QCOMPARE(f.model->currentAction().lesson->studentName, name);
    }
};

QUILLET_TEST(MenuBarViewModelTest, runTest<MenuBarViewModelTest>);
#include "MenuBarViewModelTest.moc"
