// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Names.h"
#include "tests/agent/AgentRoom.h"
#include "tests/agent/NotificationAgentFixture.h"
#include "tests/agent/RecordingServer.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QDBusVariant>
#include <QElapsedTimer>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using Behaviour = RecordingServer::Behaviour;

/// Servers that come late, refuse, hang or crash, and the sound.
class NotificationAgentServersTest final : public NotificationAgentFixture {
    Q_OBJECT

private Q_SLOTS:
    void aServerThatStartsLateShowsTheRequest()
    {
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_VERIFY_WITH_TIMEOUT(m_room->log().contains(u"no notification server"_s), agentTimeout);
        RecordingServer server(m_room->bus().address(), plain);
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 1U, agentTimeout);
    }

    void aServerThatRefusesIsTriedAgain()
    {
        RecordingServer server(m_room->bus().address(), plain);
        server.behaviour = Behaviour::refuses;
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 1U, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 1, agentTimeout);
        server.behaviour = Behaviour::shows;
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 2U, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 0, agentTimeout);
    }

    void afterAServerCrashesDuringADeliveryTheNextOneShowsIt()
    {
        auto server = std::make_unique<RecordingServer>(m_room->bus().address(), plain);
        server->behaviour = Behaviour::leaves;
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(server->shown.size(), 1U, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 1, agentTimeout);
        RecordingServer next(m_room->bus().address(), plain);
        QTRY_COMPARE_WITH_TIMEOUT(next.shown.size(), 1U, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 0, agentTimeout);
    }

    void afterASilentServerLeavesTheNextOneShowsIt()
    {
        auto server = std::make_unique<RecordingServer>(m_room->bus().address(), plain);
        server->behaviour = Behaviour::saysNothing;
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_COMPARE_WITH_TIMEOUT(server->shown.size(), 1U, agentTimeout);
        // Out of the file while it is unknown whether it is shown.
        QCOMPARE(m_room->pending(), QStringList());
        server->leave();
        RecordingServer next(m_room->bus().address(), plain);
        QTRY_COMPARE_WITH_TIMEOUT(next.shown.size(), 1U, agentTimeout);
        QCOMPARE(server->shown.size(), 1U);
    }

    void aServerThatDoesNotAnswerGetsNoRequest()
    {
        auto server = std::make_unique<RecordingServer>(m_room->bus().address(), plain);
        server->isAsleep = true;
        m_room->startAgent();
        const PendingRequest due = agentRequest(u"Anna"_s, AgentRoom::now());
        QVERIFY(isReply(m_room->add(due)));
        QTRY_COMPARE_WITH_TIMEOUT(server->asked, 1, agentTimeout);
        QCOMPARE(m_room->pending(), QStringList{due.identifier});
        server->leave();
        RecordingServer next(m_room->bus().address(), plain);
        QTRY_COMPARE_WITH_TIMEOUT(next.shown.size(), 1U, agentTimeout);
        QVERIFY(server->shown.empty());
    }

    void theAgentPlaysTheSoundForAServerWithoutOne()
    {
        PrivateSoundServer sound;
        sound.startRecording();
        RecordingServer server(m_room->bus().address(), {u"body"_s});
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now()))));
        QTRY_VERIFY_WITH_TIMEOUT(sound.peak() > 0.01, agentTimeout);
        QCOMPARE(server.shown.size(), 1U);
        for (const auto &property : {u"application.name = \"Quillet\""_s,
                                     u"application.id = \"%1\""_s.arg(QLatin1StringView(names::application)),
                                     u"media.role = \"event\""_s}) {
            QVERIFY2(sound.hasPlayed(property), qPrintable(property));
        }
    }

    void aHangingSoundServerDelaysNothing()
    {
        PrivateSoundServer sound;
        RecordingServer server(m_room->bus().address(), {u"body"_s});
        m_room->startAgent();
        sound.hang();
        const qint64 now = AgentRoom::now();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, now))));
        QVERIFY(isReply(m_room->add(agentRequest(u"Ben"_s, now))));
        QTRY_COMPARE_WITH_TIMEOUT(server.shown.size(), 2U, agentTimeout);
        QVERIFY(timer.elapsed() < 5000);
        QTRY_COMPARE(m_room->pending().size(), 0);
        sound.resume();
    }

    void aRealNotificationDaemonShowsIt()
    {
        TestDesktop desktop(QSize(800, 600));
        QProcess daemon;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_room->bus().address());
        daemon.setProcessEnvironment(environment);
        daemon.setStandardErrorFile(QProcess::nullDevice());
        daemon.setStandardOutputFile(QProcess::nullDevice());
        daemon.start(u"dunst"_s, {});
        QTRY_VERIFY_WITH_TIMEOUT(m_room->isNameOwned(u"org.freedesktop.Notifications"_s), agentTimeout);
        m_room->startAgent();
        QVERIFY(isReply(m_room->add(agentRequest(u"Anna"_s, AgentRoom::now() + 1))));
        const auto displayed = [this] {
            auto call = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                       u"/org/freedesktop/Notifications"_s,
                                                       u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
            call << u"org.dunstproject.cmd0"_s << u"displayedLength"_s;
            const QDBusMessage answer = m_room->connection().call(call, QDBus::Block, agentTimeout);
            return answer.arguments().value(0).value<QDBusVariant>().variant().toInt();
        };
        QTRY_COMPARE_WITH_TIMEOUT(displayed(), 1, agentTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(m_room->pending().size(), 0, agentTimeout);
        QVERIFY(m_room->log().contains(u"notification delivered"_s));
        daemon.kill();
        daemon.waitForFinished(agentTimeout);
    }
};

QUILLET_TEST(NotificationAgentServersTest, runTest<NotificationAgentServersTest>);
#include "NotificationAgentServersTest.moc"
