// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestProgram.h"
#include "tests/unit/MenuBarViewModelFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Loads of the lessons, on time, late and failed.
class MenuBarViewModelReloadsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
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

    void pendingWorkDoesNotTouchADestroyedModel()
    {
        MenuBarViewModelFixture f("09:00:00");
        f.store.delay = Seconds{5};
        f.start({anna()});
        f.model.reset();
        f.clock.advance(Seconds{20});
        QCOMPARE(f.store.calls, 1);
    }
};

QUILLET_TEST(MenuBarViewModelReloadsTest, runTest<MenuBarViewModelReloadsTest>);
#include "MenuBarViewModelReloadsTest.moc"
