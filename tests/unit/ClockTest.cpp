// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Clock.h"
#include "tests/support/ManualClock.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace corvane;

namespace {

QCoro::Task<void> note(Seconds duration, std::vector<double> &moments)
{
    co_await wait(duration);
    moments.push_back(secondsSince1970(currentDate()));
}

} // namespace

class ClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aManualClockEndsEachWaitAtItsOwnMoment()
    {
        ManualClock clock(dateSince1970(100));
        std::vector<double> moments;
        auto late = note(Seconds{20}, moments);
        auto early = note(Seconds{5}, moments);
        clock.advance(Seconds{4});
        QVERIFY(moments.empty());
        clock.advance(Seconds{30});
        QCOMPARE(moments, (std::vector<double>{105, 120}));
        QCOMPARE(secondsSince1970(currentDate()), 134.0);
        QCOMPARE(clock.waitCount(), std::size_t{0});
    }

    void settingTheWallClockEndsNoWait()
    {
        ManualClock clock(dateSince1970(100));
        std::vector<double> moments;
        auto task = note(Seconds{5}, moments);
        clock.setWallClock(dateSince1970(1000));
        clock.advance(Seconds{4});
        QVERIFY(moments.empty());
        clock.advance(Seconds{1});
        QCOMPARE(moments, std::vector<double>{1005});
    }

    void theSystemsClockNeverEndsAWaitEarly()
    {
        const Seconds begin = uptime();
        QCoro::waitFor(wait(Seconds{0.05}));
        QVERIFY(uptime() - begin >= Seconds{0.05});
    }

    void unusableWaitsEndAtOnce_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("zero") << 0.0;
        QTest::newRow("negative") << -5.0;
        QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN();
    }

    void unusableWaitsEndAtOnce()
    {
        QFETCH(double, seconds);
        QCoro::waitFor(wait(Seconds{seconds}));
    }
};

QUILLET_TEST(ClockTest, runTest<ClockTest>);
#include "ClockTest.moc"
