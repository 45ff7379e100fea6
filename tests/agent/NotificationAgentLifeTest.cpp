// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Names.h"
#include "NotificationAgent/AgentLifecycle.h"
#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/ProgramWatch.h"
#include "NotificationAgent/RequestFile.h"
#include "NotificationAgent/RequestKeeper.h"
#include "tests/agent/AgentRoom.h"
#include "tests/agent/FakeNotificationServer.h"
#include "tests/agent/FakeSessionProgram.h"
#include "tests/agent/FakeWallClock.h"
#include "tests/agent/NotificationAgentFixture.h"
#include "tests/agent/RecordingServer.h"
#include "tests/support/TestProgram.h"

#include <signal.h>

#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// The agent's parts in this process, so that a call can arrive at the very moment when it leaves.
struct LeavingAgent {
    explicit LeavingAgent(AgentRoom &room)
        : bus(QDBusConnection::connectToBus(room.bus().address(), u"leaving-agent"_s))
        , file(room.queuePath())
        , entry(u"/opt/agent"_s, LoginEntry::userConfigHome())
        , clock(AgentRoom::now())
        , keeper(file, entry, clock, server, [](const QString &) {})
        , watch(clock, program, [](const QString &) {})
        , lifecycle(bus, keeper, watch, [](const QString &) {})
    {
        if (!keeper.load()) {
            qFatal("the queue cannot be read");
        }
        QObject::connect(&keeper, &RequestKeeper::activityOccurred, &lifecycle,
                         [this] { hasStarted = true; });
        lifecycle.begin();
    }
    ~LeavingAgent()
    {
        ::signal(SIGTERM, SIG_DFL);
        QDBusConnection::disconnectFromBus(u"leaving-agent"_s);
    }
    LeavingAgent(const LeavingAgent &) = delete;
    LeavingAgent &operator=(const LeavingAgent &) = delete;

    // False if SIGTERM could end the agent meanwhile.
    bool leaveWithACall(const PendingRequest &late)
    {
        lifecycle.releaseName();
        lifecycle.updateIdleTimer();
        keeper.add(late,
                   [this](const std::expected<void, QString> &answer) { isAnswered = answer.has_value(); });
        return ::signal(SIGTERM, SIG_IGN) == SIG_IGN;
    }

    QDBusConnection bus;
    RequestFile file;
    LoginEntry entry;
    FakeWallClock clock;
    FakeNotificationServer server;
    RequestKeeper keeper;
    FakeSessionProgram program;
    ProgramWatch watch;
    AgentLifecycle lifecycle;
    bool isAnswered = false;
    bool hasStarted = false; ///< it owns its name, and knows
};

} // namespace

/// When the agent starts and ends.
class NotificationAgentLifeTest final : public NotificationAgentFixture {
    Q_OBJECT

    struct Ended {
        int status = -1;
        QByteArray output; ///< standard error
    };

    // Another agent on `bus`, with a state folder of its own.
    Ended runSecond(const QString &bus)
    {
        QProcess second;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus);
        environment.insert(u"XDG_STATE_HOME"_s, m_room->filePath(u"second"_s));
        second.setProcessEnvironment(environment);
        second.start(AgentRoom::program(), {});
        second.waitForFinished(agentTimeout);
        return {second.exitCode(), second.readAllStandardError()};
    }

private Q_SLOTS:
    void withNothingPendingItExitsAndLeavesNoLoginEntry()
    {
        RecordingServer server(m_room->bus().address(), plain);
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 1U, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->agent().state(), QProcess::NotRunning, agentTimeout);
        QCOMPARE(m_room->agent().exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_room->agent().exitCode(), 0);
        QVERIFY(!QFile::exists(m_room->entryPath()));
    }

    void atLoginWithNothingPendingItExitsAtOnce()
    {
        QElapsedTimer timer;
        timer.start();
        m_room->launchAgent({u"--login"_s});
        QVERIFY(m_room->agent().waitForFinished(agentTimeout));
        QCOMPARE(m_room->agent().exitCode(), 0);
        QVERIFY(timer.elapsed() < AgentLifecycle::idleTime.count());
    }

    void atLoginWithNothingPendingALeftoverEntryIsRemoved()
    {
        RecordingServer server(m_room->bus().address(), plain);
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 0, agentTimeout);
        m_room->killAgent();
        QVERIFY(QFile::exists(m_room->entryPath()));
        m_room->launchAgent({u"--login"_s});
        QVERIFY(m_room->agent().waitForFinished(agentTimeout));
        QVERIFY(!QFile::exists(m_room->entryPath()));
    }

    void atLoginWithSomethingPendingItDelivers()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1))));
        m_room->killAgent();
        RecordingServer server(m_room->bus().address(), plain);
        m_room->launchAgent({u"--login"_s});
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 1U, agentTimeout);
    }

    void atLoginItLetsTheBusStartTheAgentIfItCan()
    {
        m_room = std::make_unique<AgentRoom>(AgentRoom::Start::byBus);
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1000))));
        const qint64 former = m_room->ownerProcess();
        QVERIFY(former > 0);
        ::kill(static_cast<pid_t>(former), SIGKILL);
        QTRY_VERIFY(!m_room->isNameOwned());
        m_room->launchAgent({u"--login"_s});
        QTRY_COMPARE_WITH_TIMEOUT(m_room->agent().state(), QProcess::NotRunning, agentTimeout);
        QVERIFY(m_room->ownerProcess() > 0);
    }

    void theBusStartsItOnDemand()
    {
        m_room = std::make_unique<AgentRoom>(AgentRoom::Start::byBus);
        QCOMPARE(m_room->pending(), QStringList());
        const PendingRequest later = agentRequest(u"Anna"_s, AgentRoom::now() + 1000);
        QVERIFY(isReply(m_room->add(later)));
        const qint64 former = m_room->ownerProcess();
        ::kill(static_cast<pid_t>(former), SIGKILL);
        QTRY_VERIFY(m_room->ownerProcess() != former);
        QCOMPARE(m_room->pending(), QStringList{later.identifier});
    }

    void itEndsWithItsBus()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1000))));
        m_room->bus().stop();
        QVERIFY(m_room->agent().waitForFinished(agentTimeout));
        QCOMPARE(m_room->agent().exitStatus(), QProcess::NormalExit);
    }

    void withoutABusItEnds()
    {
        m_room->launchAgent({}, u"export DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere"_s);
        QVERIFY(m_room->agent().waitForFinished(agentTimeout));
        QCOMPARE(m_room->agent().exitCode(), 1);
        QVERIFY(m_room->log().contains(u"there is no session bus"_s));
    }

    void aLogThatCannotBeWrittenIsReportedOnStandardError()
    {
        QVERIFY(QDir().mkpath(m_room->filePath(u"second/Logs/Quillet/quillet-notification-agent.log"_s)));
        const Ended second = runSecond(u"unix:path=/nowhere"_s);
        QCOMPARE(second.status, 1);
        QVERIFY2(second.output.contains("quillet-notification-agent.log cannot be written: it is "),
                 second.output.constData());
    }

    void thereIsNeverASecondAgent()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1000))));
        const qint64 first = m_room->ownerProcess();
        // Not even on another bus, as in a second session.
        PrivateBus other;
        QProcess second;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, other.address());
        second.setProcessEnvironment(environment);
        second.setStandardErrorFile(QProcess::nullDevice());
        second.start(AgentRoom::program(), {});
        QVERIFY(second.waitForFinished(agentTimeout));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(m_room->ownerProcess(), first);
        QVERIFY(m_room->log().contains(u"another agent keeps this queue"_s));
    }

    // As in a second session on the same bus with a folder of its own.
    void aSecondAgentOnTheSameBusEnds()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1000))));
        const Ended second = runSecond(m_room->bus().address());
        QCOMPARE(second.status, 0);
        QVERIFY(second.output.contains("the bus does not give the name: it is taken"));
    }

    void nobodyTakesItsNameOver()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1000))));
        constexpr uint replaceExisting = 2;
        constexpr uint doNotQueue = 4;
        constexpr uint exists = 3;
        auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                   u"org.freedesktop.DBus"_s, u"RequestName"_s);
        call << QString(names::agent) << (replaceExisting | doNotQueue);
        const QDBusReply<uint> reply = m_room->connection().call(call);
        QVERIFY2(reply.isValid(), qPrintable(reply.error().message()));
        QCOMPARE(reply.value(), exists);
    }

    // Systemd does that: for it, an agent without its name has ended.
    void terminationOnTheLossOfItsNameLosesNothing()
    {
        RecordingServer server(m_room->bus().address(), plain);
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 1U, agentTimeout);
        const auto process = static_cast<pid_t>(m_room->agent().processId());
        int terminations = 0;
        QDBusServiceWatcher watcher(names::agent, m_room->connection(),
                                    QDBusServiceWatcher::WatchForUnregistration);
        connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, [&] {
            terminations += 1;
            ::kill(process, SIGTERM);
        });
        QTRY_VERIFY_WITH_TIMEOUT(terminations > 0, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->agent().state(), QProcess::NotRunning, agentTimeout);
        QCOMPARE(m_room->agent().exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_room->agent().exitCode(), 0);
        QVERIFY(!QFile::exists(m_room->entryPath()));
        QFile file(m_room->queuePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("Anna"));
    }

    void aRequestDuringItsExitIsLeftToTheNextAgent()
    {
        m_room = std::make_unique<AgentRoom>(AgentRoom::Start::byBus);
        QueueLock lock(m_room->queuePath() + u".lock"_s);
        QCOMPARE(lock.tryLock(), QueueLock::Attempt::locked);
        const PendingRequest late = agentRequest(u"Anna"_s, AgentRoom::now() + 1000);
        {
            LeavingAgent agent(*m_room);
            QTRY_VERIFY_WITH_TIMEOUT(agent.hasStarted, agentTimeout);
            QSignalSpy ended(&agent.lifecycle, &AgentLifecycle::ended);
            QVERIFY(agent.leaveWithACall(late));
            QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 1, agentTimeout);
            QCOMPARE(ended.first().first().toInt(), 0);
            QVERIFY(agent.isAnswered);
            QCOMPARE(agent.server.asked, 0);
            QVERIFY(!m_room->isNameOwned());
        }
        QVERIFY(QFile::exists(m_room->entryPath()));
        // The bus has started a new agent without another call; it waits for the lock.
        lock.unlock();
        QTRY_VERIFY_WITH_TIMEOUT(m_room->isNameOwned(), agentTimeout);
        QCOMPARE(m_room->pending(), QStringList{late.identifier});
    }

    void ifTheBusStartsNoAgentARequestDuringItsExitKeepsItRunning()
    {
        LeavingAgent agent(*m_room);
        QTRY_VERIFY_WITH_TIMEOUT(agent.hasStarted, agentTimeout);
        QSignalSpy ended(&agent.lifecycle, &AgentLifecycle::ended);
        // Its clock stands still: what is due by the real one may not be due by it.
        QVERIFY(agent.leaveWithACall(agentRequest(u"Anna"_s, agent.clock.now())));
        QTRY_COMPARE_WITH_TIMEOUT(agent.server.handed.size(), 1, agentTimeout);
        QVERIFY(m_room->isNameOwned());
        QVERIFY(ended.isEmpty());
    }
};

QUILLET_TEST(NotificationAgentLifeTest, runTest<NotificationAgentLifeTest>);
#include "NotificationAgentLifeTest.moc"
