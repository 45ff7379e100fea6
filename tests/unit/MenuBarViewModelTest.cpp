// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestProgram.h"
#include "tests/unit/MenuBarViewModelFixture.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The banners and the title in the course of a day, the snapshot and the log.
class MenuBarViewModelTest final : public QObject {
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
