// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/SystemSoundPlayer.h"

#include "tests/support/FakeSystemSounds.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class SystemSoundPlayerTest : public QObject {
    Q_OBJECT

    ManualClock m_clock{at("10:00:00")};
    QTemporaryDir m_library;

private Q_SLOTS:
    void theNamedSoundIsPlayedAndLogged()
    {
        DebugLogService logger(m_library.path());
        FakeSystemSounds sounds;
        SystemSoundPlayer(logger, sounds).playNotificationSound();
        QCOMPARE(sounds.played, QStringList{u"Glass"_s});
        QCOMPARE(sounds.beeps, 0);
        QCOMPARE(logger.latestLines(), QStringList{u"2026-11-16T10:00:00.000Z sound played name=Glass"_s});
    }

    void withoutTheNamedSoundEveryCallBeepsAndLogsIt()
    {
        DebugLogService logger(m_library.path());
        FakeSystemSounds sounds;
        sounds.available.clear();
        const SystemSoundPlayer player(logger, sounds);
        player.playNotificationSound();
        player.playNotificationSound();
        QCOMPARE(sounds.beeps, 2);
        const QString line = u"2026-11-16T10:00:00.000Z sound fallback played name=NSSound.beep"_s;
        QCOMPARE(logger.latestLines(), (QStringList{line, line}));
    }

    void twoCallsWithinASecondPlayAndLogTwice()
    {
        DebugLogService logger(m_library.path());
        FakeSystemSounds sounds;
        const SystemSoundPlayer player(logger, sounds);
        player.playNotificationSound();
        player.playNotificationSound();
        QCOMPARE(sounds.played, (QStringList{u"Glass"_s, u"Glass"_s}));
        QCOMPARE(logger.latestLines().size(), 2);
    }

    void aSlowSoundServerDelaysNothing()
    {
        DebugLogService logger(m_library.path());
        FakeSystemSounds sounds;
        sounds.hold();
        SystemSoundPlayer(logger, sounds).playNotificationSound();
        QVERIFY(logger.latestLines().isEmpty());
        // The player no longer exists: the answer does not need it.
        sounds.release(false);
        QCOMPARE(sounds.beeps, 1);
        QCOMPARE(logger.latestLines().size(), 1);
    }
};

QUILLET_TEST(SystemSoundPlayerTest, runTest<SystemSoundPlayerTest>);
#include "SystemSoundPlayerTest.moc"
