// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"

#include "tests/adapters/MockService.h"
#include "tests/support/ManualClock.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <qcoro/qcorodbuspendingcall.h>

#include <memory>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QDBusMessage> askLogin(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, 10000);
}

} // namespace

// Uses mock services of python3-dbusmock on private buses.
class SessionLockWatcherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_systemBus = std::make_unique<PrivateBus>(QStringList{}, PrivateBus::Kind::system);
        m_sessionBus = std::make_unique<PrivateBus>();
        qunsetenv("XDG_SESSION_ID");
    }

    void cleanup()
    {
        m_watcher.reset();
        m_manager.reset();
        m_saver.reset();
        for (const QString &name : {u"system"_s, u"session"_s, u"system control"_s, u"session control"_s}) {
            QDBusConnection::disconnectFromBus(name);
        }
        m_systemBus.reset();
        m_sessionBus.reset();
        qunsetenv("XDG_SESSION_ID");
    }

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

private:
    static QDBusConnection control(const PrivateBus &bus, const QString &name)
    {
        const QDBusConnection known(name);
        return known.isConnected() ? known : QDBusConnection::connectToBus(bus.address(), name);
    }

    void awaitName(const QDBusConnection &bus, const QString &name)
    {
        QTRY_VERIFY_WITH_TIMEOUT(bus.interface()->isServiceRegistered(name), 20000);
    }

    void startManager()
    {
        m_manager = std::make_unique<MockService>(*m_systemBus, u"--system"_s,
                                                  QStringList{u"--template"_s, u"logind"_s});
        awaitName(control(*m_systemBus, u"system control"_s), u"org.freedesktop.login1"_s);
        addSession(u"c1"_s);
        // The template has no GetSessionByPID.
        callManager(u"/org/freedesktop/login1"_s, u"org.freedesktop.DBus.Mock"_s, u"AddMethod"_s,
                    {u"org.freedesktop.login1.Manager"_s, u"GetSessionByPID"_s, u"u"_s, u"o"_s,
                     u"ret = '/org/freedesktop/login1/session/c1'"_s});
    }

    void addSession(const QString &id)
    {
        callManager(u"/org/freedesktop/login1"_s, u"org.freedesktop.DBus.Mock"_s, u"AddSession"_s,
                    {id, u"seat0"_s, 1000U, u"teacher"_s, true});
    }

    void startSaver()
    {
        m_saver = std::make_unique<MockService>(*m_sessionBus, u"--session"_s,
                                                QStringList{u"--template"_s, u"gnome_screensaver"_s});
        awaitName(control(*m_sessionBus, u"session control"_s), u"org.gnome.ScreenSaver"_s);
    }

    void make()
    {
        m_watcher = std::make_unique<SessionLockWatcher>(
            QDBusConnection::connectToBus(m_systemBus->address(), u"system"_s),
            QDBusConnection::connectToBus(m_sessionBus->address(), u"session"_s));
        m_changes = std::make_unique<QSignalSpy>(m_watcher.get(), &SessionLockWatcher::lockedChanged);
    }

    // Creates the watcher and waits until its initial calls are answered.
    void watch()
    {
        make();
        settle();
    }

    // Calls through the watcher's own connections, where answers arrive after everything sent before. Three
    // rounds, since some of the watcher's calls depend on the answers to others.
    void settle()
    {
        for (int round = 0; round < 3; ++round) {
            for (const QString &name : {u"system"_s, u"session"_s}) {
                const QDBusConnection bus(name);
                if (!bus.isConnected()) {
                    continue;
                }
                const QStringList names = bus.interface()->registeredServiceNames();
                for (const QString &service : {u"org.freedesktop.login1"_s, u"org.gnome.ScreenSaver"_s}) {
                    if (names.contains(service)) {
                        const auto ping = QDBusMessage::createMethodCall(
                            service, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
                        QCoro::waitFor(askLogin(bus, ping));
                    }
                }
            }
        }
    }

    void callManager(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments)
    {
        auto message = QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, path, interface, method);
        message.setArguments(arguments);
        const QDBusMessage answer =
            QCoro::waitFor(askLogin(control(*m_systemBus, u"system control"_s), message));
        QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
    }

    void emitFromSession(const QString &signal)
    {
        callManager(u"/org/freedesktop/login1/session/c1"_s, u"org.freedesktop.DBus.Mock"_s, u"EmitSignal"_s,
                    {u"org.freedesktop.login1.Session"_s, signal, QString(), QVariantList()});
    }

    void setHint(bool locked)
    {
        callManager(u"/org/freedesktop/login1/session/c1"_s, u"org.freedesktop.login1.Session"_s,
                    u"SetLockedHint"_s, {locked});
    }

    void setSaver(bool active)
    {
        auto message = QDBusMessage::createMethodCall(u"org.gnome.ScreenSaver"_s, u"/org/gnome/ScreenSaver"_s,
                                                      u"org.gnome.ScreenSaver"_s, u"SetActive"_s);
        message << active;
        const QDBusMessage answer =
            QCoro::waitFor(askLogin(control(*m_sessionBus, u"session control"_s), message));
        QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
    }

    [[nodiscard]] QList<bool> changes() const
    {
        QList<bool> changes;
        for (const QList<QVariant> &change : *m_changes) {
            changes.append(change.first().toBool());
        }
        return changes;
    }

    std::unique_ptr<PrivateBus> m_systemBus;
    std::unique_ptr<PrivateBus> m_sessionBus;
    std::unique_ptr<MockService> m_manager;
    std::unique_ptr<MockService> m_saver;
    std::unique_ptr<SessionLockWatcher> m_watcher;
    std::unique_ptr<QSignalSpy> m_changes;
    /// Measures only the timeout of a lock request; the buses use real time.
    ManualClock m_clock{dateSince1970(0)};
};

QUILLET_TEST(SessionLockWatcherTest, runTest<SessionLockWatcherTest>);
#include "SessionLockWatcherTest.moc"
