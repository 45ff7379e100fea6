// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/WorkflowTransitionScheduler.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

MainThreadOperation noting(std::vector<double> &moments, Date origin)
{
    return [&moments, origin]() -> QCoro::Task<void> {
        moments.push_back((currentDate() - origin).count());
        return [] -> QCoro::Task<void> { co_return; }();
    };
}

} // namespace

class WorkflowTransitionSchedulerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theOperationRunsAtOnceAndThenOnceASecond()
    {
        ManualClock clock(at("09:00:00"));
        WorkflowTransitionScheduler scheduler;
        std::vector<double> moments;
        scheduler.start(noting(moments, at("09:00:00")));
        clock.advance(Seconds{0});
        QCOMPARE(moments, std::vector<double>{0});
        clock.advance(Seconds{3.5});
        QCOMPARE(moments, (std::vector<double>{0, 1, 2, 3}));
    }

    void startingTwiceKeepsOnlyTheSecondOperation()
    {
        ManualClock clock(at("09:00:00"));
        WorkflowTransitionScheduler scheduler;
        std::vector<double> first;
        std::vector<double> second;
        scheduler.start(noting(first, at("09:00:00")));
        clock.advance(Seconds{1.5});
        scheduler.start(noting(second, at("09:00:00")));
        clock.advance(Seconds{3});
        QCOMPARE(first, (std::vector<double>{0, 1}));
        QCOMPARE(second, (std::vector<double>{1.5, 2.5, 3.5, 4.5}));
        QCOMPARE(clock.waitCount(), std::size_t{1});
    }

    void aTickDoesNotWaitForThePreviousOne()
    {
        ManualClock clock(at("09:00:00"));
        WorkflowTransitionScheduler scheduler;
        int begun = 0;
        int ended = 0;
        scheduler.start([&] {
            return [](int &begun, int &ended) -> QCoro::Task<void> {
                ++begun;
                co_await wait(Seconds{2.5});
                ++ended;
            }(begun, ended);
        });
        clock.advance(Seconds{4.75});
        QCOMPARE(begun, 5);
        QCOMPARE(ended, 3);
        clock.advance(Seconds{0});
    }

    void aWaitingOperationIsKeptUntilItsEnd()
    {
        ManualClock clock(at("09:00:00"));
        WorkflowTransitionScheduler scheduler;
        auto held = std::make_shared<int>();
        const std::weak_ptr<int> observed = held;
        scheduler.start([held = std::move(held)]() -> QCoro::Task<void> { co_await wait(Seconds{0.5}); });
        clock.advance(Seconds{0});
        scheduler.start([] -> QCoro::Task<void> { co_return; });
        clock.advance(Seconds{0.25});
        QVERIFY(!observed.expired());
        clock.advance(Seconds{0.5});
        QVERIFY(observed.expired());
    }

    void aWaitingOperationDoesNotKeepTheTimerRunning()
    {
        ManualClock clock(at("09:00:00"));
        auto scheduler = std::make_unique<WorkflowTransitionScheduler>();
        int begun = 0;
        scheduler->start([&] {
            return [](int &begun) -> QCoro::Task<void> {
                ++begun;
                co_await wait(Seconds{2.5});
            }(begun);
        });
        clock.advance(Seconds{0});
        scheduler.reset();
        clock.advance(Seconds{5});
        QCOMPARE(begun, 1);
    }

    void aClockChangeNeitherStopsNorSpeedsUpTheBeat()
    {
        ManualClock clock(at("09:00:00"));
        WorkflowTransitionScheduler scheduler;
        int beats = 0;
        scheduler.start([&] {
            ++beats;
            return [] -> QCoro::Task<void> { co_return; }();
        });
        clock.advance(Seconds{0});
        clock.setWallClock(at("07:00:00"));
        clock.advance(Seconds{10});
        QCOMPARE(beats, 11);
        clock.setWallClock(at("12:00:00"));
        clock.advance(Seconds{10});
        QCOMPARE(beats, 21);
    }

    void theTimerEndsWithTheScheduler()
    {
        ManualClock clock(at("09:00:00"));
        auto scheduler = std::make_unique<WorkflowTransitionScheduler>();
        std::vector<double> moments;
        scheduler->start(noting(moments, at("09:00:00")));
        clock.advance(Seconds{1});
        scheduler.reset();
        clock.advance(Seconds{10});
        QCOMPARE(moments, (std::vector<double>{0, 1}));
        QCOMPARE(clock.waitCount(), std::size_t{0});
    }

    void theRealTimerBeatsOnceASecond()
    {
        auto scheduler = std::make_unique<WorkflowTransitionScheduler>();
        QElapsedTimer elapsed;
        elapsed.start();
        std::vector<qint64> moments;
        scheduler->start([&] {
            moments.push_back(elapsed.elapsed());
            return [] -> QCoro::Task<void> { co_return; }();
        });
        QTRY_VERIFY_WITH_TIMEOUT(moments.size() >= 3, 20000);
        // Never early, except for the millisecond that the stopwatch truncates. Lateness depends on the
        // machine, but two beats take less than four seconds.
        QVERIFY(moments[1] - moments[0] >= 999);
        QVERIFY(moments[2] - moments[0] >= 1999);
        QVERIFY(moments[2] - moments[0] < 4000);
        // The pending wait ends without another beat.
        const std::size_t beats = moments.size();
        scheduler.reset();
        QCoro::waitFor(wait(Seconds{1.1}));
        QCOMPARE(moments.size(), beats);
    }
};

QUILLET_TEST(WorkflowTransitionSchedulerTest, runTest<WorkflowTransitionSchedulerTest>);
#include "WorkflowTransitionSchedulerTest.moc"
