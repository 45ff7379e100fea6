// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/SleepGuard.h"

#include "tests/support/FakePowerSource.h"
#include "tests/support/FakeSleepInhibitor.h"
#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct SleepGuardFixture : ViewModelFixture {
    using ViewModelFixture::ViewModelFixture;

    FakePowerSource power;
    FakeSleepInhibitor inhibitor;
    SleepGuard guard{*model, power, inhibitor};
};

} // namespace

class SleepGuardTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sleepIsPreventedFromAnHourBeforeALessonToItsEnd_data()
    {
        QTest::addColumn<Date>("now");
        QTest::addColumn<bool>("onMains");
        QTest::addColumn<bool>("onBattery");
        QTest::newRow("more than an hour before") << at("08:59:59.9") << false << false;
        QTest::newRow("an hour before") << at("09:00:00") << true << false;
        QTest::newRow("more than twenty minutes before") << at("09:39:59.9") << true << false;
        QTest::newRow("twenty minutes before") << at("09:40:00") << true << true;
        QTest::newRow("at its start") << at("10:00:00") << true << true;
        QTest::newRow("before its end") << at("10:24:59.9") << true << true;
        QTest::newRow("at its end") << at("10:25:00") << false << false;
    }

    void sleepIsPreventedFromAnHourBeforeALessonToItsEnd()
    {
        QFETCH(Date, now);
        QTEST(staysAwake({lessonAt("10:00:00")}, now, false), "onMains");
        QTEST(staysAwake({lessonAt("10:00:00")}, now, true), "onBattery");
    }

    void anyLessonCounts()
    {
        const std::vector lessons{lessonAt("08:00:00"), lessonAt("10:00:00"), lessonAt("14:00:00")};
        QVERIFY(staysAwake(lessons, at("09:30:00"), false));
        QVERIFY(!staysAwake(lessons, at("12:00:00"), false));
        QVERIFY(!staysAwake({}, at("12:00:00"), false));
    }

    void theMachineIsKeptAwakeUntilTheLessonEnds()
    {
        SleepGuardFixture f("08:00:00");
        f.start({lessonAt("10:00:00")});
        f.clock.advanceTo(at("08:59:59"));
        QVERIFY(!f.inhibitor.isHeld);
        f.clock.advanceTo(at("09:00:01"));
        QVERIFY(f.inhibitor.isHeld);
        f.clock.advanceTo(at("10:24:59"));
        QVERIFY(f.inhibitor.isHeld);
        f.clock.advanceTo(at("10:25:01"));
        QVERIFY(!f.inhibitor.isHeld);
        QCOMPARE(f.inhibitor.times, 1);
    }

    void aReloadWithoutLessonsAllowsSleep()
    {
        SleepGuardFixture f("09:30:00");
        f.start({lessonAt("10:00:00")});
        QVERIFY(f.inhibitor.isHeld);
        f.store.answer = std::vector<Lesson>{};
        spawn(f.model->reloadLessons());
        QVERIFY(!f.inhibitor.isHeld);
    }

    void aPowerChangeTakesEffectAtOnce()
    {
        SleepGuardFixture f("09:30:00");
        f.start({lessonAt("10:00:00")});
        f.power.setOnBattery(true);
        QVERIFY(!f.inhibitor.isHeld);
        f.power.setOnBattery(false);
        QVERIFY(f.inhibitor.isHeld);
    }

    void lessonsLoadedBeforeItsCreationCount()
    {
        ViewModelFixture f("09:30:00");
        f.start({lessonAt("10:00:00")});
        const FakePowerSource power;
        FakeSleepInhibitor inhibitor;
        const SleepGuard guard(*f.model, power, inhibitor);
        QVERIFY(inhibitor.isHeld);
    }
};

QUILLET_TEST(SleepGuardTest, runTest<SleepGuardTest>);
#include "SleepGuardTest.moc"
