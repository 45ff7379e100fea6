// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CalendarRefresher.h"

#include "tests/support/FakeEventStore.h"
#include "tests/support/FakeSystemWatcher.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <memory>

using namespace corvane;

namespace {

struct CalendarRefresherFixture {
    ManualClock clock{at("09:00:00")};
    FakeEventStore store;
    FakeSystemWatcher watcher;
    int reloads = 0;
    std::unique_ptr<CalendarRefresher> refresher =
        std::make_unique<CalendarRefresher>(store, watcher, [this] { ++reloads; });

    void tellNews() { Q_EMIT store.monitor().newsArrived(); }
};

constexpr Seconds shortTime{0.01};

} // namespace

class CalendarRefresherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noRefreshIsRequestedBeforeTheStart()
    {
        CalendarRefresherFixture f;
        f.clock.advance(Seconds{3600});
        QCOMPARE(f.store.refreshes, 0);
    }

    void itRefreshesAtTheStartAndEveryFiveMinutes()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        QCOMPARE(f.store.refreshes, 1);
        f.clock.advance(Seconds{300} - shortTime);
        QCOMPARE(f.store.refreshes, 1);
        f.clock.advance(2 * shortTime);
        QCOMPARE(f.store.refreshes, 2);
        QCOMPARE(f.store.lastRefresh, CalendarRefresh::regular);
        f.clock.advance(Seconds{3600});
        QCOMPARE(f.store.refreshes, 14);
        f.refresher->refresh();
        QCOMPARE(f.store.lastRefresh, CalendarRefresh::wished);
    }

    void itRefreshesAtOnceOnRequest()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        f.clock.advance(Seconds{100});
        f.refresher->refresh();
        QCOMPARE(f.store.refreshes, 2);
    }

    void itRefreshesOnWakingAndWhenTheNetworkReturns()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        f.watcher.sleepAndWake();
        QCOMPARE(f.store.refreshes, 2);
        f.watcher.setNetworkUsable(false);
        QCOMPARE(f.store.refreshes, 2);
        f.watcher.setNetworkUsable(true);
        QCOMPARE(f.store.refreshes, 3);
    }

    void theFiveMinutesCountFromTheLastRefresh()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        f.clock.advance(Seconds{200});
        f.watcher.sleepAndWake();
        QCOMPARE(f.store.refreshes, 2);
        f.clock.advance(Seconds{300} - shortTime);
        QCOMPARE(f.store.refreshes, 2);
        f.clock.advance(2 * shortTime);
        QCOMPARE(f.store.refreshes, 3);
    }

    void aClockChangeRefreshesNothing()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        f.clock.setWallClock(at("09:00:00") + Seconds{86400});
        f.watcher.setClockBy(Seconds{86400});
        f.watcher.setZone("America/Havana");
        f.clock.advance(Seconds{299});
        QCOMPARE(f.store.refreshes, 1);
        f.clock.advance(Seconds{2});
        QCOMPARE(f.store.refreshes, 2);
    }

    void manyRefreshesKeepOneTimer()
    {
        CalendarRefresherFixture f;
        for (int times = 0; times < 100; ++times) {
            f.refresher->refresh();
        }
        QCOMPARE(f.clock.waitCount(), std::size_t{1});
    }

    void newsReloadsTheLessonsWithinASecond()
    {
        CalendarRefresherFixture f;
        f.tellNews();
        f.clock.advance(Seconds{1});
        QCOMPARE(f.reloads, 1);
        f.clock.advance(Seconds{3600});
        QCOMPARE(f.reloads, 1);
    }

    void newsWithinASecondIsMergedIntoOneReloadAndNoneIsLost()
    {
        CalendarRefresherFixture f;
        for (int times = 0; times < 5; ++times) {
            f.tellNews();
            f.clock.advance(Seconds{0.15});
        }
        QCOMPARE(f.reloads, 0);
        f.clock.advance(Seconds{0.3});
        QCOMPARE(f.reloads, 1);
        f.tellNews();
        f.clock.advance(Seconds{1});
        QCOMPARE(f.reloads, 2);
    }

    void newsDuringAReloadCausesAnother()
    {
        CalendarRefresherFixture f;
        int reloads = 0;
        const CalendarRefresher refresher(f.store, f.watcher, [&] {
            if (++reloads == 1) {
                f.tellNews();
            }
        });
        f.tellNews();
        f.clock.advance(Seconds{5});
        QCOMPARE(reloads, 2);
    }

    void destroyingItEndsRefreshesAndReloads()
    {
        CalendarRefresherFixture f;
        f.refresher->refresh();
        f.tellNews();
        f.refresher.reset();
        f.watcher.sleepAndWake();
        f.clock.advance(Seconds{3600});
        QCOMPARE(f.store.refreshes, 1);
        QCOMPARE(f.reloads, 0);
        QCOMPARE(f.clock.waitCount(), std::size_t{0});
    }
};

QUILLET_TEST(CalendarRefresherTest, runTest<CalendarRefresherTest>);
#include "CalendarRefresherTest.moc"
