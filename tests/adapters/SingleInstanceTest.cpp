// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SingleInstance.h"

#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <signal.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <qcoro/qcorodbuspendingcall.h>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using Start = SingleInstance::Start;

namespace {

QCoro::Task<QDBusMessage> ask(QDBusConnection bus, QDBusMessage message)
{
    co_return co_await bus.asyncCall(message, 10000);
}

} // namespace

class SingleInstanceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void cleanup()
    {
        m_instances.clear();
        for (int i = 0; i < m_connections; ++i) {
            QDBusConnection::disconnectFromBus(QString::number(i));
        }
        m_connections = 0;
        m_bus.reset();
    }

    void theFirstStartTakesTheName()
    {
        QCOMPARE(claim(make()), Start::first);
        QVERIFY(connection().interface()->isServiceRegistered(u"com.ordwinsoftware.Quillet"_s));
    }

    void aSecondStartHandsOver()
    {
        SingleInstance &first = make();
        QCOMPARE(claim(first), Start::first);
        QSignalSpy activations(&first, &SingleInstance::activationRequested);
        QCOMPARE(claim(make(), u"token-7"_s), Start::handedOver);
        QTRY_COMPARE(activations.size(), 1);
        QCOMPARE(activations.first().first().toString(), u"token-7"_s);
    }

    void aSecondStartByTheDesktopLeavesTheFirstAlone()
    {
        SingleInstance &first = make(u"one"_s);
        QCOMPARE(claim(first), Start::first);
        QSignalSpy activations(&first, &SingleInstance::activationRequested);
        QCOMPARE(claim(make(u"one"_s), {}, SingleInstance::Wish::nothing), Start::leftAlone);
        QCOMPARE(claim(make(u"other"_s), {}, SingleInstance::Wish::nothing), Start::leftAlone);
        QCOMPARE(claim(make(u"one"_s)), Start::handedOver);
        QTRY_COMPARE(activations.size(), 1); // only that of the last
    }

    void aSecondStartWithOtherFoldersHandsOver()
    {
        SingleInstance &first = make(u"one"_s);
        QCOMPARE(claim(first), Start::first);
        QSignalSpy activations(&first, &SingleInstance::activationRequested);
        QCOMPARE(claim(make(u"other"_s)), Start::handedOver);
        QTRY_COMPARE(activations.size(), 1);
        // The second start has released its locks, so a later start can become the first.
        m_instances.clear();
        QTRY_VERIFY(!connection().interface()->isServiceRegistered(u"com.ordwinsoftware.Quillet"_s) ||
                    dropConnections());
        QCOMPARE(claim(make(u"other"_s)), Start::first);
    }

    void withoutABusTheLockDetectsASecondStart()
    {
        QCOMPARE(claim(makeWithoutBus()), Start::first);
        QCOMPARE(claim(makeWithoutBus()), Start::otherSilent);
    }

    void aStartWithABusFindsAnInstanceWithoutOne()
    {
        QCOMPARE(claim(makeWithoutBus()), Start::first);
        QCOMPARE(claim(make()), Start::otherSilent);
    }

    void aStartWithoutABusFindsAnInstanceWithOne()
    {
        QCOMPARE(claim(make()), Start::first);
        QCOMPARE(claim(makeWithoutBus()), Start::otherSilent);
    }

    void oneCommonFolderIsEnough()
    {
        m_instances.push_back(std::make_unique<SingleInstance>(
            QDBusConnection(u"none"_s), QStringList{m_folder->filePath(u"a"_s), m_folder->filePath(u"b"_s)}));
        QCOMPARE(claim(*m_instances.back()), Start::first);
        m_instances.push_back(std::make_unique<SingleInstance>(
            QDBusConnection(u"none"_s), QStringList{m_folder->filePath(u"c"_s), m_folder->filePath(u"b"_s)}));
        QCOMPARE(claim(*m_instances.back()), Start::otherSilent);
    }

    void theLockEndsWithTheProgram()
    {
        QCOMPARE(claim(makeWithoutBus()), Start::first);
        m_instances.clear();
        QCOMPARE(claim(makeWithoutBus()), Start::first);
    }

    void anInstanceThatGaveUpIsIgnored()
    {
        // Its connection still exists, like that of a process whose end the bus has not noticed.
        SingleInstance &first = make();
        QCOMPARE(claim(first), Start::first);
        first.giveUp();
        QCOMPARE(claim(make()), Start::first);
        QCOMPARE(claim(make()), Start::handedOver);
    }

    void anInstanceWithoutABusCanGiveUp()
    {
        SingleInstance &first = makeWithoutBus();
        QCOMPARE(claim(first), Start::first);
        first.giveUp();
        QCOMPARE(claim(makeWithoutBus()), Start::first);
    }

    void ifNothingCanBeLockedTheProgramStarts()
    {
        const QString file = m_folder->filePath(u"file"_s);
        QFile blocker(file);
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        m_instances.push_back(
            std::make_unique<SingleInstance>(QDBusConnection(u"none"_s), QStringList{file}));
        QCOMPARE(claim(*m_instances.back()), Start::first);
    }

    void ofTwoSimultaneousStartsOneIsTheFirst()
    {
        SingleInstance &one = make();
        SingleInstance &two = make();
        auto first = one.claim({});
        auto second = two.claim({});
        const QList<Start> starts{QCoro::waitFor(first), QCoro::waitFor(second)};
        QCOMPARE(starts, (QList<Start>{Start::first, Start::handedOver}));
    }

    void ofTwoSimultaneousStartsWithOtherFoldersOneIsTheFirst()
    {
        SingleInstance &one = make(u"one"_s);
        SingleInstance &two = make(u"two"_s);
        auto first = one.claim({});
        auto second = two.claim({});
        const QList<Start> starts{QCoro::waitFor(first), QCoro::waitFor(second)};
        QCOMPARE(starts.count(Start::first), 1);
        QCOMPARE(starts.count(Start::handedOver), 1);
    }

    void anInstanceThatHangsTimesOut()
    {
        // A process that never answers holds the name.
        QProcess silent;
        silent.start(u"/usr/bin/python3"_s, {u"-c"_s,
                                             u"import fcntl, os, sys, time\n"
                                             "import dbus\n"
                                             "bus = dbus.bus.BusConnection(sys.argv[1])\n"
                                             "bus.request_name('com.ordwinsoftware.Quillet')\n"
                                             "print('ready', flush=True)\n"
                                             "time.sleep(600)\n"_s,
                                             m_bus->address()});
        QVERIFY(silent.waitForReadyRead(20000));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(claim(make()), Start::otherSilent);
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        silent.kill();
        silent.waitForFinished(5000);
    }

    void aBusThatHangsDoesNotPreventTheStart()
    {
        SingleInstance &instance = make();
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(claim(instance), Start::first);
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGCONT);
    }

    void theLossOfTheBusIsReportedAndTheLockStays()
    {
        SingleInstance &first = make();
        QCOMPARE(claim(first), Start::first);
        QSignalSpy losses(&first, &SingleInstance::busLost);
        QSignalSpy quits(&first, &SingleInstance::quitRequested);
        m_bus->stop();
        QTRY_COMPARE(losses.size(), 1);
        QVERIFY(quits.isEmpty());
        // A second start, on the new session's bus.
        m_bus = std::make_unique<PrivateBus>();
        QCOMPARE(claim(make()), Start::otherSilent);
    }

    void theQuitActionRequestsTheEnd()
    {
        SingleInstance &first = make();
        QCOMPARE(claim(first), Start::first);
        QSignalSpy quits(&first, &SingleInstance::quitRequested);
        QCOMPARE(call(u"ActivateAction"_s, {u"none"_s, QVariantList(), QVariantMap()}).type(),
                 QDBusMessage::ReplyMessage);
        QVERIFY(quits.isEmpty());
        QCOMPARE(call(u"ActivateAction"_s, {u"quit"_s, QVariantList(), QVariantMap()}).type(),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(quits.size(), 1);
    }

    void eachCallOfALauncherActivates()
    {
        SingleInstance &first = make();
        QCOMPARE(claim(first), Start::first);
        QSignalSpy activations(&first, &SingleInstance::activationRequested);
        call(u"Activate"_s, {QVariantMap{{u"desktop-startup-id"_s, u"old"_s}}});
        call(u"Activate"_s,
             {QVariantMap{{u"desktop-startup-id"_s, u"old"_s}, {u"activation-token"_s, u"new"_s}}});
        call(u"Open"_s, {QStringList{u"file:///x"_s}, QVariantMap()});
        QCOMPARE(activations.size(), 3);
        QCOMPARE(activations.at(0).first().toString(), u"old"_s);
        QCOMPARE(activations.at(1).first().toString(), u"new"_s);
        QCOMPARE(activations.at(2).first().toString(), QString());
    }

    void theActivationTokenIsTakenOnce()
    {
        qputenv("DESKTOP_STARTUP_ID", "old");
        qputenv("XDG_ACTIVATION_TOKEN", "new");
        QCOMPARE(SingleInstance::takeActivationToken(), u"new"_s);
        QCOMPARE(SingleInstance::takeActivationToken(), QString());
    }

    void theLocksAreInTheUsersFolders()
    {
        QCOMPARE(SingleInstance::userLockDirectories(),
                 (QStringList{qEnvironmentVariable("XDG_STATE_HOME") + u"/quillet"_s,
                              qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/quillet"_s}));
    }

private:
    QDBusConnection connection()
    {
        return QDBusConnection::connectToBus(m_bus->address(), QString::number(m_connections++));
    }

    bool dropConnections()
    {
        for (int i = 0; i < m_connections; ++i) {
            QDBusConnection::disconnectFromBus(QString::number(i));
        }
        return false;
    }

    SingleInstance &make(const QString &folder = u"locks"_s)
    {
        m_instances.push_back(
            std::make_unique<SingleInstance>(connection(), QStringList{m_folder->filePath(folder)}));
        return *m_instances.back();
    }

    SingleInstance &makeWithoutBus()
    {
        m_instances.push_back(std::make_unique<SingleInstance>(QDBusConnection(u"none"_s),
                                                               QStringList{m_folder->filePath(u"locks"_s)}));
        return *m_instances.back();
    }

    static Start claim(SingleInstance &instance, const QString &token = {},
                       SingleInstance::Wish wish = SingleInstance::Wish::activation)
    {
        return QCoro::waitFor(instance.claim(token, wish));
    }

    QDBusMessage call(const QString &method, const QVariantList &arguments)
    {
        auto message =
            QDBusMessage::createMethodCall(u"com.ordwinsoftware.Quillet"_s, u"/com/ordwinsoftware/Quillet"_s,
                                           u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        return QCoro::waitFor(ask(connection(), message));
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::vector<std::unique_ptr<SingleInstance>> m_instances;
    int m_connections = 0;
};

QUILLET_TEST(SingleInstanceTest, runTest<SingleInstanceTest>);
#include "SingleInstanceTest.moc"
