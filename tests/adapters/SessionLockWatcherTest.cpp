// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"
#include "tests/adapters/SessionLockRoom.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The session manager's lock, and sources that hang or are absent.
class SessionLockWatcherTest final : public QObject, private SessionLockRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void lockAndUnlockOfTheSessionManagerAreFollowed()
    {
        startManager();
        watch();
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        emitFromSession(u"Unlock"_s);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void theLockedHintIsFollowed()
    {
        startManager();
        watch();
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
        setHint(false);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void aLockAtTheStartIsNoticed()
    {
        startManager();
        setHint(true);
        make();
        QTRY_VERIFY(m_watcher->locked());
    }

    void theSessionIsFoundByItsIdFromTheEnvironment()
    {
        startManager();
        qputenv("XDG_SESSION_ID", "c1");
        setHint(true);
        make();
        QTRY_VERIFY(m_watcher->locked());
    }

    void anotherSessionsLockIsIgnored()
    {
        startManager();
        addSession(u"c2"_s);
        watch();
        callManager(u"/org/freedesktop/login1/session/c2"_s, u"org.freedesktop.login1.Session"_s, u"Lock"_s,
                    {});
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        emitFromSession(u"Unlock"_s);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void aLockRequestAndItsHintAreOneLock()
    {
        startManager();
        watch();
        emitFromSession(u"Lock"_s);
        setHint(true);
        setHint(false);
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }

    void aLockRequestWithoutALockExpires()
    {
        startManager();
        watch();
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        m_clock.advance(SessionLockWatcher::requestTimeout - Seconds{0.1});
        QVERIFY(m_watcher->locked());
        m_clock.advance(Seconds{0.2});
        QVERIFY(!m_watcher->locked());
        // A later request has a time limit of its own.
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        m_clock.advance(SessionLockWatcher::requestTimeout - Seconds{0.1});
        QVERIFY(m_watcher->locked());
        m_clock.advance(SessionLockWatcher::requestTimeout);
    }

    void aLockRequestFollowedByALockLastsAsLongAsTheLock()
    {
        startManager();
        watch();
        emitFromSession(u"Lock"_s);
        QTRY_VERIFY(m_watcher->locked());
        setHint(true);
        // The hint arrives after the request; let the hour pass only once it has arrived.
        QTRY_VERIFY([&] {
            m_clock.advance(SessionLockWatcher::requestTimeout);
            return m_watcher->locked();
        }());
        m_clock.advance(Seconds{3600});
        QVERIFY(m_watcher->locked());
        setHint(false);
        QTRY_VERIFY(!m_watcher->locked());
    }

    void aSessionManagerThatCrashesWhileLockedDoesNotLockForEver()
    {
        // The mock takes its name before it has any session, but answers with the path when asked by session
        // id.
        qputenv("XDG_SESSION_ID", "c1");
        startManager();
        watch();
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
        m_manager.reset();
        QTRY_VERIFY(!m_watcher->locked());
        // After a restart it is followed again.
        startManager();
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
    }

    void withoutBusesNothingIsLocked()
    {
        SessionLockWatcher watcher(QDBusConnection(u"none"_s), QDBusConnection(u"neither"_s));
        QVERIFY(!watcher.locked());
    }

    void withoutSourcesNothingIsLockedAndNothingIsStarted()
    {
        watch();
        QVERIFY(!m_watcher->locked());
    }

    void aSourceThatHangsDoesNotBlockTheMainThread()
    {
        startManager();
        startSaver();
        QElapsedTimer timer;
        m_manager->suspend();
        m_saver->suspend();
        timer.start();
        make();
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(!m_watcher->locked());
        m_manager->resume();
        m_saver->resume();
        setHint(true);
        QTRY_VERIFY_WITH_TIMEOUT(m_watcher->locked(), 10000);
    }

    void aBusThatBreaksOffWhileLockedDoesNotLockForEver()
    {
        startManager();
        startSaver();
        watch();
        setSaver(true);
        setHint(true);
        QTRY_VERIFY(m_watcher->locked());
        settle();
        m_sessionBus->stop();
        m_systemBus->stop();
        QTRY_VERIFY(!m_watcher->locked());
        QCOMPARE(changes(), (QList<bool>{true, false}));
    }
};

QUILLET_TEST(SessionLockWatcherTest, runTest<SessionLockWatcherTest>);
#include "SessionLockWatcherTest.moc"
