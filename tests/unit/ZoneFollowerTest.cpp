// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ZoneFollower.h"

#include "Corvane/Utilities/DayCalendar.h"
#include "tests/support/FakeSystemWatcher.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct ZoneFollowerFixture {
    QTemporaryDir library;
    DebugLogService logger{library.path()};
    FakeSystemWatcher watcher;
    int restarts = 0;
    ZoneFollower follower{watcher, systemTimeZoneId(), logger, [this] { ++restarts; }};

    /// Sets the machine's zone and lets the watcher report it.
    void setZone(const QByteArray &zone)
    {
        qputenv("TZ", zone);
        watcher.setZone(zone);
    }
};

} // namespace

class ZoneFollowerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("TZ", "Europe/Berlin"); }
    void cleanup() { qputenv("TZ", "UTC"); }

    void anotherZoneRestartsTheProgram()
    {
        ZoneFollowerFixture f;
        f.setZone("America/Havana");
        QCOMPARE(f.restarts, 1);
        QVERIFY(f.logger.latestLines().last().endsWith(
            u"time zone changed from=Europe/Berlin to=America/Havana; restarting"));
    }

    void aRestartIsRequestedOnce()
    {
        ZoneFollowerFixture f;
        f.setZone("America/Havana");
        f.setZone("Europe/Rome");
        QCOMPARE(f.restarts, 1);
    }

    void theInitialZoneCausesNoRestart()
    {
        ZoneFollowerFixture f;
        QCoreApplication::processEvents();
        f.watcher.setZone("Europe/Vienna");
        f.watcher.setZone("Europe/Berlin");
        QCOMPARE(f.restarts, 0);
        QVERIFY(f.logger.latestLines().isEmpty());
    }

    void aZoneThatChangedDuringTheStartIsNoticed()
    {
        ZoneFollowerFixture f;
        qputenv("TZ", "America/Havana");
        QTRY_COMPARE(f.restarts, 1);
    }

    void anUnknownZoneCausesNoRestartLoop()
    {
        qputenv("TZ", "No/Where");
        ZoneFollowerFixture f;
        QCoreApplication::processEvents();
        f.watcher.setZone("No/Where");
        QCOMPARE(f.restarts, 0);
    }

    void otherSystemChangesCauseNoRestart()
    {
        ZoneFollowerFixture f;
        f.watcher.sleepAndWake();
        f.watcher.setClockBy(Seconds{86400});
        QCoreApplication::processEvents();
        QCOMPARE(f.restarts, 0);
    }
};

QUILLET_TEST(ZoneFollowerTest, runTest<ZoneFollowerTest>);
#include "ZoneFollowerTest.moc"
