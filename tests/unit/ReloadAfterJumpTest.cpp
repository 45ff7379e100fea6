// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ReloadAfterJump.h"

#include "tests/support/FakeSystemWatcher.h"
#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Seconds sixHours{6.0 * 3600};

struct ReloadAfterJumpFixture : ViewModelFixture {
    using ViewModelFixture::ViewModelFixture;

    FakeSystemWatcher watcher;
    std::unique_ptr<ReloadAfterJump> reloads = std::make_unique<ReloadAfterJump>(watcher, *model, backups);

    void setClockBack(Seconds span)
    {
        clock.setWallClock(currentDate() - span);
        watcher.setClockBy(-span);
        clock.advance(Seconds{0});
    }

    /// The phases announced since the previous call.
    QStringList announced()
    {
        QStringList states;
        for (const auto &presented : std::exchange(presenter.presented, {})) {
            states.append(rawValue(presented.action.state));
        }
        return states;
    }

    /// The number of backups that are still to come.
    [[nodiscard]] int pending() const
    {
        return static_cast<int>(std::ranges::count_if(
            center.requests, [](const auto &request) { return request.fireDate > currentDate(); }));
    }
};

QStringList allPhases()
{
    return {u"prepare"_s, u"oneMinuteWarning"_s, u"joinPlatform"_s, u"startNow"_s, u"wrapUp"_s};
}

} // namespace

class ReloadAfterJumpTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutReloadAfterJumpAClockSetBackStopsReloads()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.reloads.reset();
        f.start({});
        f.setClockBack(sixHours);
        f.clock.advance(sixHours - Seconds{1});
        QCOMPARE(f.store.calls, 1);
    }

    void afterAClockSetBackLessonsBannersAndBackupsAreRight()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.start({lessonAt("10:30:00")});
        QCOMPARE(f.pending(), 0);
        f.setClockBack(sixHours);
        QCOMPARE(f.store.calls, 2);
        QCOMPARE(f.pending(), 5);
        // A lesson added now is loaded within a minute.
        f.store.answer = std::vector{lessonAt("10:30:00"), lessonAt("11:00:00")};
        f.clock.advance(Seconds{61});
        QCOMPARE(f.model->lessons().size(), std::size_t{2});
        QCOMPARE(f.pending(), 10);
        f.clock.advanceTo(at("10:55:30"));
        QCOMPARE(f.announced(), allPhases());
        f.clock.advanceTo(at("11:25:00"));
        QCOMPARE(f.announced(), allPhases());
        QCOMPARE(f.pending(), 0);
    }

    void stepsPastOnlyByTheWrongTimeArePendingAgain()
    {
        // The lesson is in progress by the wrong time and still to come by the right one; the lessons stay
        // the same.
        ReloadAfterJumpFixture f("16:05:00");
        f.start({lessonAt("16:00:00")});
        QCOMPARE(f.pending(), 1);
        f.setClockBack(sixHours);
        QCOMPARE(f.pending(), 5);
        f.clock.advanceTo(at("16:26:00"));
        QCOMPARE(f.announced(), allPhases());
    }

    void aRunOvertakenByTheJumpIsRepeated()
    {
        ReloadAfterJumpFixture f("16:05:00");
        f.center.hold();
        f.start({lessonAt("16:00:00")});
        // By the wrong time, the run skips four steps and is about to hand over the fifth.
        for (int call = 0; call < 3; ++call) {
            f.center.releaseOne();
        }
        QCOMPARE(f.center.calls.constLast().section(u'.', 0, 2), u"add quillet.backup.finish"_s);
        f.store.delay = Seconds{0.5};
        f.setClockBack(sixHours);
        f.center.release();
        QCOMPARE(f.pending(), 1);
        f.clock.advance(Seconds{1});
        QCOMPARE(f.pending(), 5);
    }

    void wakingAndAReturningNetworkReloadOnce()
    {
        ReloadAfterJumpFixture f("09:00:00");
        f.start({});
        f.watcher.sleepAndWake();
        QCOMPARE(f.store.calls, 2);
        f.watcher.setNetworkUsable(false);
        QCOMPARE(f.store.calls, 2);
        f.watcher.setNetworkUsable(true);
        QCOMPARE(f.store.calls, 3);
        f.clock.advance(Seconds{30});
        QCOMPARE(f.store.calls, 3);
    }

    void anotherZoneReloadsNothing()
    {
        ReloadAfterJumpFixture f("09:00:00");
        f.start({});
        f.watcher.setZone("America/Havana");
        f.clock.advance(Seconds{30});
        QCOMPARE(f.store.calls, 1);
    }

    void aFailedLoadIsRetriedEachSecondUntilOneSucceeds()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.start({});
        f.store.answer = std::unexpected(CalendarAccessError::denied);
        f.setClockBack(sixHours);
        QCOMPARE(f.store.calls, 2);
        f.clock.advance(Seconds{10.5});
        QCOMPARE(f.store.calls, 12);
        f.store.answer = std::vector{lessonAt("10:30:00")};
        f.clock.advance(Seconds{1});
        QCOMPARE(f.model->lessons().size(), std::size_t{1});
        QCOMPARE(f.pending(), 5);
        f.clock.advance(Seconds{30});
        QCOMPARE(f.store.calls, 13);
    }

    void aJumpBeforeTheFirstSuccessfulLoadIsHandled()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.store.answer = std::unexpected(CalendarAccessError::denied);
        spawn(f.model->start());
        f.setClockBack(sixHours);
        f.clock.advance(Seconds{10});
        f.store.answer = std::vector{lessonAt("10:30:00")};
        f.clock.advance(Seconds{1});
        QCOMPARE(f.pending(), 5);
        const int calls = f.store.calls;
        f.clock.advance(Seconds{30});
        QCOMPARE(f.store.calls, calls);
    }

    void aLoadThatBeganBeforeTheJumpDoesNotCount()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.store.delay = Seconds{3};
        f.start({});
        f.clock.advance(Seconds{1});
        f.store.answer = std::unexpected(CalendarAccessError::denied);
        f.setClockBack(sixHours);
        // The first load succeeds two seconds after the jump; the load started by the jump fails a second
        // later.
        f.clock.advance(Seconds{2.5});
        QVERIFY(!f.model->lastErrorMessage());
        f.store.answer = std::vector{lessonAt("10:30:00")};
        f.clock.advance(Seconds{5});
        QCOMPARE(f.model->lessons().size(), std::size_t{1});
    }

    void severalJumpsShareOneRetryPerSecond()
    {
        ReloadAfterJumpFixture f("09:00:00");
        f.start({});
        f.store.answer = std::unexpected(CalendarAccessError::denied);
        for (int times = 0; times < 5; ++times) {
            f.watcher.sleepAndWake();
        }
        QCOMPARE(f.store.calls, 6);
        f.clock.advance(Seconds{10.5});
        QCOMPARE(f.store.calls, 16);
    }

    void aHangingNotificationServiceDelaysNoLoad()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.start({});
        f.center.hold();
        f.store.answer = std::vector{lessonAt("10:30:00")};
        f.setClockBack(sixHours);
        QCOMPARE(f.model->lessons().size(), std::size_t{1});
        f.clock.advanceTo(at("10:26:01"));
        QCOMPARE(f.announced(), QStringList{u"prepare"_s});
    }

    void destroyingItEndsTheRetries()
    {
        ReloadAfterJumpFixture f("16:00:00");
        f.start({});
        f.store.answer = std::unexpected(CalendarAccessError::denied);
        f.setClockBack(sixHours);
        const int calls = f.store.calls;
        f.reloads.reset();
        f.clock.advance(Seconds{10});
        QCOMPARE(f.store.calls, calls);
    }
};

QUILLET_TEST(ReloadAfterJumpTest, runTest<ReloadAfterJumpTest>);
#include "ReloadAfterJumpTest.moc"
