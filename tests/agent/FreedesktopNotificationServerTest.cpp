// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/FreedesktopNotificationServer.h"

#include "NotificationAgent/NotificationSound.h"
#include "tests/agent/RecordingServer.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using Behaviour = RecordingServer::Behaviour;
using Outcome = NotificationServer::Outcome;

namespace {

class CountingSound final : public NotificationSound {
public:
    void play() override { ++played; }
    int played = 0;
};

const PendingRequest annasRequest{u"i"_s, u"Anna"_s, u"b"_s, u"c"_s, 1, 2};

} // namespace

class FreedesktopNotificationServerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_sound.played = 0;
        m_name = u"client-%1"_s.arg(++m_number);
        m_server = std::make_unique<FreedesktopNotificationServer>(
            QDBusConnection::connectToBus(m_bus->address(), m_name), m_sound,
            FreedesktopNotificationServer::Timeouts{std::chrono::milliseconds(300),
                                                    std::chrono::milliseconds(300)});
    }

    void cleanup()
    {
        m_server.reset();
        QDBusConnection::disconnectFromBus(m_name);
        m_bus.reset();
    }

    void aMissingServerIsReported() { QVERIFY(!ask()); }

    void aServerThatDoesNotAnswerInTimeCountsAsMissing()
    {
        RecordingServer server(m_bus->address(), {});
        server.isAsleep = true;
        QVERIFY(!ask());
        QCOMPARE(server.asked, 1);
    }

    void theArrivalOfAServerIsReported()
    {
        QSignalSpy arrivals(m_server.get(), &NotificationServer::arrived);
        QVERIFY(!ask());
        RecordingServer server(m_bus->address(), {});
        QTRY_COMPARE(arrivals.size(), 1);
        QVERIFY(ask());
    }

    void aServerThatAnswersHasShownIt()
    {
        RecordingServer server(m_bus->address(), {u"sound"_s});
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::shown);
        QCOMPARE(server.shownWith(u"Anna"_s), 1);
        QCOMPARE(m_sound.played, 0);
    }

    void theSoundIsPlayedOnlyForAServerWithoutSoundAndOnlyWhenItShows()
    {
        RecordingServer server(m_bus->address(), {u"body"_s});
        server.behaviour = Behaviour::refuses;
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::notShown);
        QCOMPARE(m_sound.played, 0);
        server.behaviour = Behaviour::shows;
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::shown);
        QCOMPARE(m_sound.played, 1);
    }

    void aServerThatRefusesHasNotShownIt()
    {
        RecordingServer server(m_bus->address(), {});
        server.behaviour = Behaviour::refuses;
        QSignalSpy ends(m_server.get(), &NotificationServer::finished);
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::notShown);
        QCOMPARE(ends.first().at(1).toString(),
                 u"org.freedesktop.Notifications.Error.ExcessNotificationGeneration: too many"_s);
    }

    void aServerThatLeavesWithoutAnAnswerHasNotShownIt()
    {
        RecordingServer server(m_bus->address(), {});
        server.behaviour = Behaviour::leaves;
        QSignalSpy departures(m_server.get(), &NotificationServer::left);
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::notShown);
        QTRY_COMPARE(departures.size(), 1);
    }

    void theOutcomeOfASilentServerIsUnknownUntilItLeaves()
    {
        RecordingServer server(m_bus->address(), {});
        server.behaviour = Behaviour::saysNothing;
        QSignalSpy departures(m_server.get(), &NotificationServer::left);
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::unknown);
        QVERIFY(departures.isEmpty());
        server.leave();
        QTRY_COMPARE(departures.size(), 1);
    }

    void aDeliveryGoesOnlyToTheServerThatWasAsked()
    {
        auto first = std::make_unique<RecordingServer>(m_bus->address(), QStringList{});
        QVERIFY(ask());
        first.reset();
        RecordingServer second(m_bus->address(), {});
        QCOMPARE(deliver(), Outcome::notShown);
        QVERIFY(second.shown.empty());
        QVERIFY(ask());
        QCOMPARE(deliver(), Outcome::shown);
        QCOMPARE(second.shown.size(), 1U);
    }

    void aQuietRequestIsShownWithoutASound()
    {
        const RecordingServer server(m_bus->address(), {u"body"_s});
        PendingRequest quiet = annasRequest;
        quiet.isQuiet = true;
        QVERIFY(ask());
        QCOMPARE(deliver(quiet), Outcome::shown);
        QCOMPARE(m_sound.played, 0);
        QCOMPARE(deliver(), Outcome::shown);
        QCOMPARE(m_sound.played, 1);
    }

    void aServerThatReleasesItsNameIsReplacedAndHasNotLeft()
    {
        RecordingServer first(m_bus->address(), {});
        QSignalSpy departures(m_server.get(), &NotificationServer::left);
        QSignalSpy replacements(m_server.get(), &NotificationServer::replaced);
        QVERIFY(ask());
        QVERIFY(replacements.isEmpty());
        first.releaseName();
        RecordingServer second(m_bus->address(), {});
        QVERIFY(ask());
        QCOMPARE(replacements.size(), 1);
        QVERIFY(departures.isEmpty());
        QCOMPARE(deliver(), Outcome::shown);
        QCOMPARE(second.shown.size(), 1U);
        second.leave();
        QTRY_COMPARE(departures.size(), 1);
    }

private:
    bool ask()
    {
        QSignalSpy answers(m_server.get(), &NotificationServer::answered);
        m_server->ask();
        return answers.wait(10'000) && answers.first().first().toBool();
    }

    Outcome deliver(const PendingRequest &delivered = annasRequest)
    {
        QSignalSpy ends(m_server.get(), &NotificationServer::finished);
        m_server->deliver(delivered);
        if (!ends.wait(10'000)) {
            qFatal("no outcome");
        }
        return ends.first().first().value<Outcome>();
    }

    int m_number = 0;
    QString m_name;
    std::unique_ptr<PrivateBus> m_bus;
    CountingSound m_sound;
    std::unique_ptr<FreedesktopNotificationServer> m_server;
};

QUILLET_TEST(FreedesktopNotificationServerTest, runTest<FreedesktopNotificationServerTest>);
#include "FreedesktopNotificationServerTest.moc"
