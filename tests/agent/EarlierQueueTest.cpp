// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLifecycle.h"
#include "NotificationAgent/RequestFile.h"
#include "tests/agent/AgentRoom.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// A queue file as the first version wrote it, without quiet requests.
const QByteArray firstVersion =
    "quillet pending requests 1\n"
    "840a3c7b5c003593 [\"quillet.backup.prepare.4000000000.Anna\",\"Quillet: prepare\","
    "\"Anna starts in 4 minutes.\",\"quillet.lesson\",3999999760,4000000000]\n"
    "7b831fec09967416 [\"quillet.backup.join.4000000000.\xe7\x8e\x8b \\\"\xc3\x84\\\"\",\"Quillet: join "
    "now\","
    "\"Join \xe7\x8e\x8b \\\"\xc3\x84\\\" now.\",\"quillet.lesson\",3999999970,4000000000]\n"
    "end 2\n";

const QStringList identifiers{u"quillet.backup.prepare.4000000000.Anna"_s,
                              u"quillet.backup.join.4000000000.王 \"Ä\""_s};

} // namespace

/// What an earlier version leaves behind: its queue, and a Quillet started before the update.
class EarlierQueueTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aQueueOfTheFirstVersionIsReadCompletely()
    {
        const DecodedRequests decoded = decodedRequests(firstVersion);
        QVERIFY(decoded.isWhole);
        QCOMPARE(decoded.requests.size(), std::size_t{2});
        QCOMPARE(decoded.requests.back(),
                 (PendingRequest{identifiers.last(), u"Quillet: join now"_s, u"Join 王 \"Ä\" now."_s,
                                 u"quillet.lesson"_s, 3999999970, 4000000000}));
    }

    void aDowngradeToTheFirstVersionLosesNothing()
    {
        RequestQueue queue;
        for (const PendingRequest &request : decodedRequests(firstVersion).requests) {
            queue.add(request);
        }
        QCOMPARE(encodedRequests(queue, nullptr), firstVersion);
    }

    void theAgentTakesOverItsPredecessorsQueue()
    {
        AgentRoom room;
        QVERIFY(QDir().mkpath(QFileInfo(room.queuePath()).path()));
        QFile file(room.queuePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(firstVersion);
        file.close();
        room.startAgent();
        QCOMPARE(room.pending(), identifiers);
        QVERIFY(!QFile::exists(room.queuePath() + u".unreadable"_s));
    }

    // The first version sends no greeting, so the agent cannot tell a crash from quitting.
    void aQuilletOfTheFirstVersionIsServedButNotRestarted()
    {
        AgentRoom room;
        const QString name = u"com.ordwinsoftware.Quillet"_s;
        const QString started = room.filePath(u"started"_s);
        room.addService(name, u"touch '%1'; exit 1"_s.arg(started));
        room.startAgent();
        {
            QDBusConnection bus = QDBusConnection::connectToBus(room.bus().address(), u"earlier"_s);
            QVERIFY(bus.registerService(name));
            const qint64 soon = AgentRoom::now() + 1000;
            for (const QString &identifier : identifiers) {
                const QDBusMessage answer = bus.call(room.message(
                    u"Add"_s, {identifier, u"t"_s, u"b"_s, u"quillet.lesson"_s, soon, soon + 60}));
                QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
            }
            QCOMPARE(
                bus.call(room.message(u"RemovePendingRequests"_s, {QStringList{identifiers.first()}})).type(),
                QDBusMessage::ReplyMessage);
        }
        QDBusConnection::disconnectFromBus(u"earlier"_s);
        QTRY_VERIFY(!room.isNameOwned(name));
        QTest::qWait(1000);
        QVERIFY(!QFile::exists(started));
        QCOMPARE(room.pending(), QStringList{identifiers.last()});
    }
};

QUILLET_TEST(EarlierQueueTest, runTest<EarlierQueueTest>);
#include "EarlierQueueTest.moc"
