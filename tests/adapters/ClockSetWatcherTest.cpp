// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/ClockSetWatcher.h"

#include "tests/adapters/FakeWallClockAlarm.h"
#include "tests/support/TestProgram.h"

#include <poll.h>
#include <sys/timerfd.h>

#include <QSignalSpy>
#include <QSocketNotifier>

#include <chrono>
#include <memory>

using namespace corvane;

namespace {

/// Whether the watcher still listens to its alarm.
bool isWatching(const ClockSetWatcher &watcher)
{
    return watcher.findChild<QSocketNotifier *>() != nullptr;
}

/// An alarm that the kernel refuses.
class NoAlarm final : public WallClockAlarm {
public:
    [[nodiscard]] int descriptor() const override { return -1; }
    bool arm() override { return false; }
    [[nodiscard]] Seconds offset() const override { return {}; }
};

} // namespace

/// Behaviour beyond the port's contract. The machine's real clock is never set, since other programs share
/// it.
class ClockSetWatcherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAlarmWithoutAChangeIsOnlyArmedAgain()
    {
        auto owned = std::make_unique<FakeWallClockAlarm>();
        FakeWallClockAlarm &alarm = *owned;
        const ClockSetWatcher watcher(std::move(owned));
        const QSignalSpy told(&watcher, &ClockSetWatcher::clockWasSet);
        QCOMPARE(alarm.armings, 1);
        // As after a sleep.
        alarm.set(Seconds{0});
        QTRY_COMPARE(alarm.armings, 2);
        QCOMPARE(told.size(), 0);
        alarm.set(Seconds{-1});
        QTRY_COMPARE(alarm.armings, 3);
        QCOMPARE(told.size(), 1);
    }

    void smallChangesAddUp()
    {
        auto owned = std::make_unique<FakeWallClockAlarm>();
        FakeWallClockAlarm &alarm = *owned;
        const ClockSetWatcher watcher(std::move(owned));
        const QSignalSpy told(&watcher, &ClockSetWatcher::clockWasSet);
        for (int times = 1; times <= 3; ++times) {
            alarm.set(Seconds{0.04});
            QTRY_COMPARE(alarm.armings, times + 1);
            QCOMPARE(told.size(), times < 3 ? 0 : 1);
        }
    }

    void anAlarmThatCannotBeArmedAgainIsGivenUp()
    {
        auto owned = std::make_unique<FakeWallClockAlarm>();
        FakeWallClockAlarm &alarm = *owned;
        const ClockSetWatcher watcher(std::move(owned));
        const QSignalSpy told(&watcher, &ClockSetWatcher::clockWasSet);
        alarm.isArmable = false;
        alarm.set(Seconds{60});
        QTRY_COMPARE(alarm.armings, 2);
        QVERIFY(!isWatching(watcher));
        QCOMPARE(alarm.armings, 2);
        QCOMPARE(told.size(), 0);
    }

    void aRefusalByTheKernelIsHarmless()
    {
        const ClockSetWatcher watcher(std::make_unique<NoAlarm>());
        const QSignalSpy told(&watcher, &ClockSetWatcher::clockWasSet);
        QVERIFY(!isWatching(watcher));
        QCOMPARE(told.size(), 0);
    }

    void theKernelsAlarmIsSilentWhileTheClockRuns()
    {
        KernelWallClockAlarm alarm;
        QVERIFY(alarm.descriptor() >= 0);
        QVERIFY(alarm.arm());
        QVERIFY(alarm.arm());
        pollfd readable{.fd = alarm.descriptor(), .events = POLLIN, .revents = 0};
        QCOMPARE(::poll(&readable, 1, 0), 0);
        itimerspec armed{};
        QCOMPARE(::timerfd_gettime(alarm.descriptor(), &armed), 0);
        constexpr time_t oneYear = 31'536'000;
        QVERIFY(armed.it_value.tv_sec > oneYear);
    }

    void theOffsetIsConstantWhileTheClockRuns()
    {
        const KernelWallClockAlarm alarm;
        const Seconds before = alarm.offset();
        // The wall clock is ahead of the time since boot by decades.
        QVERIFY(before > std::chrono::hours(24 * 365 * 10));
        const Seconds begin = uptime();
        QTRY_VERIFY(uptime() - begin > ClockSetWatcher::leastChange);
        QVERIFY(std::chrono::abs(alarm.offset() - before) < ClockSetWatcher::leastChange / 2);
    }
};

QUILLET_TEST(ClockSetWatcherTest, runTest<ClockSetWatcherTest>);
#include "ClockSetWatcherTest.moc"
