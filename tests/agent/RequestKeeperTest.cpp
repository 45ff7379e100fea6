// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/RequestKeeperFixture.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Requests on their way from the caller to the file and to the server.
class RequestKeeperTest final : public RequestKeeperFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aRequestIsDeliveredInItsSecondAndNotBefore()
    {
        QVERIFY(add(request(u"a"_s, noon + 3)));
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon + 3));
        m_clock->tick();
        m_clock->tick();
        settle();
        QCOMPARE(m_server->asked, 0);
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
        QTRY_VERIFY(m_keeper->isIdle());
    }

    void aSecondThatBeginsDuringTheQueueCheckIsNotSkipped()
    {
        m_clock->isHurried = true;
        QVERIFY(add(request(u"a"_s, noon + 1)));
        settle();
        // This alarm rings at once, since its second has begun by now.
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon + 1));
    }

    void anOverdueRequestIsDeliveredAtOnce()
    {
        QVERIFY(add(request(u"a"_s, noon - 10)));
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void requestsDueInTheSameSecondAreDeliveredInTurn()
    {
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, (QStringList{u"b"_s, u"a"_s}));
    }

    void aRequestIsConfirmedOnceItIsOnDisk()
    {
        bool isAnswered = false;
        m_keeper->add(request(u"a"_s, noon + 5), [&](const std::expected<void, QString> &result) {
            isAnswered = true;
            QVERIFY(result);
            QCOMPARE(onDisk(), QStringList{u"a"_s});
        });
        QVERIFY(!isAnswered);
        QTRY_VERIFY(isAnswered);
    }

    void simultaneousChangesShareOneWrite()
    {
        int answers = 0;
        for (int i = 0; i < 500; ++i) {
            m_keeper->add(request(QString::number(i), noon + 5),
                          [&](const std::expected<void, QString> &) { ++answers; });
        }
        QCOMPARE(onDisk(), QStringList());
        QTRY_VERIFY(answers > 0);
        QCOMPARE(answers, 500);
        QCOMPARE(onDisk().size(), 500);
    }

    // A peer that never pauses does not postpone the answers to others for ever.
    void aThousandChangesAreWrittenWithoutWaitingForMore()
    {
        int answers = 0;
        const auto add = [&](int number) {
            m_keeper->add(request(QString::number(number), noon + 5),
                          [&](const std::expected<void, QString> &) { ++answers; });
        };
        for (int i = 0; i < 999; ++i) {
            add(i);
        }
        QCOMPARE(answers, 0);
        add(999);
        QCOMPARE(answers, 1000);
        QCOMPARE(onDisk().size(), 1000);
    }

    void aRequestIsOffTheDiskBeforeTheServerGetsIt()
    {
        QStringList left{u"not looked"_s};
        m_server->onDeliver = [&](const PendingRequest &) { left = onDisk(); };
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed.size(), 1);
        QCOMPARE(left, QStringList());
    }

    void anAgentThatDiesAfterTheDeliveryDoesNotDeliverAgain()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed.size(), 1);
        restart();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
    }

    void removedRequestsAreNotDelivered()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QVERIFY(remove({u"a"_s, u"not pending"_s}));
        QCOMPARE(onDisk(), QStringList{u"b"_s});
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"b"_s});
    }

    void aRequestRemovedWhileTheServerIsAskedIsNotDelivered()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_keeper->remove({u"a"_s}, [](const std::expected<void, QString> &) {});
        m_server->answer();
        settle();
        QVERIFY(m_server->handed.isEmpty());
        QVERIFY(m_keeper->isIdle());
    }

    void requestsThatArriveWhileDeliveryIsStoppedAreOnlyStored()
    {
        m_keeper->stopDelivering();
        QVERIFY(add(request(u"a"_s, noon)));
        settle();
        QCOMPARE(onDisk(), QStringList{u"a"_s});
        QCOMPARE(m_server->asked, 0);
        m_keeper->start();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void thousandsOfSimultaneousRequestsAreDeliveredInOrder()
    {
        QStringList expected;
        for (int i = 0; i < 2'000; ++i) {
            expected.append(QString::number(i));
            m_keeper->add(request(expected.constLast(), noon + 1 + i, 100'000),
                          [](const std::expected<void, QString> &) {});
        }
        QTRY_COMPARE(onDisk().size(), 2'000);
        QElapsedTimer timer;
        timer.start();
        m_clock->set(noon + 20'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed.size(), 2'000, 60'000);
        qInfo() << "ms for two thousand that came due together" << timer.elapsed();
        QCOMPARE(m_server->handed, expected);
    }
};

QUILLET_TEST(RequestKeeperTest, runTest<RequestKeeperTest>);
#include "RequestKeeperTest.moc"
