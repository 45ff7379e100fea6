// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/SessionLockRoom.h"
#include "tests/support/TestProgram.h"

#include <QDBusMessage>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Screen savers, alone and beside the session manager.
class ScreenSaverLockTest final : public QObject, private SessionLockRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void theScreenSaverIsFollowed()
    {
        startSaver();
        watch();
        setSaver(true);
        QTRY_VERIFY(m_watcher->locked());
        setSaver(false);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void aScreenSaverActiveAtTheStartLocks()
    {
        startSaver();
        setSaver(true);
        make();
        QTRY_VERIFY(m_watcher->locked());
    }

    void aScreenSaverThatStartsLaterIsFollowed()
    {
        watch();
        startSaver();
        setSaver(true);
        QTRY_VERIFY(m_watcher->locked());
    }

    void everyKnownScreenSaverIsFollowed_data()
    {
        QTest::addColumn<QString>("interface");
        QTest::newRow("freedesktop") << u"org.freedesktop.ScreenSaver"_s;
        QTest::newRow("gnome") << u"org.gnome.ScreenSaver"_s;
        QTest::newRow("mate") << u"org.mate.ScreenSaver"_s;
        QTest::newRow("cinnamon") << u"org.cinnamon.ScreenSaver"_s;
        QTest::newRow("xfce") << u"org.xfce.ScreenSaver"_s;
    }

    void everyKnownScreenSaverIsFollowed()
    {
        QFETCH(QString, interface);
        watch();
        for (const bool active : {true, false}) {
            auto signal = QDBusMessage::createSignal(u"/any/path"_s, interface, u"ActiveChanged"_s);
            signal << active;
            QVERIFY(control(*m_sessionBus, u"session control"_s).send(signal));
            QTRY_COMPARE(m_watcher->locked(), active);
        }
    }

    void oneLockedSourceIsEnough()
    {
        startManager();
        startSaver();
        watch();
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
        setSaver(true);
        setHint(false);
        // The manager's signal has arrived once its answer to a later call has.
        settle();
        QVERIFY(m_watcher->locked());
        setSaver(false);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void theScreenSaversEndEndsALockRequestButNotTheHint()
    {
        startManager();
        startSaver();
        watch();
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        setSaver(true);
        setSaver(false);
        QTRY_VERIFY(!m_watcher->locked());
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
        setSaver(true);
        setSaver(false);
        settle();
        QVERIFY(m_watcher->locked());
    }

    void aScreenSaverThatCrashesWhileLockedDoesNotLockForEver()
    {
        startSaver();
        watch();
        setSaver(true);
        QTRY_VERIFY(m_watcher->locked());
        m_saver.reset();
        QTRY_VERIFY(!m_watcher->locked());
    }
};

QUILLET_TEST(ScreenSaverLockTest, runTest<ScreenSaverLockTest>);
#include "ScreenSaverLockTest.moc"
