// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/RequestKeeperFixture.h"
#include "tests/support/TestProgram.h"

#include <QDateTime>
#include <QTest>
#include <QTimeZone>

using namespace corvane;
using namespace Qt::StringLiterals;

/// A clock that jumps.
class RequestKeeperClockTest final : public RequestKeeperFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aClockSetForwardDeliversUnexpiredRequestsInOrderAndDropsTheRest()
    {
        QVERIFY(add(request(u"over"_s, noon + 100)));
        QVERIFY(add(request(u"second"_s, noon + 1000)));
        QVERIFY(add(request(u"first"_s, noon + 990)));
        QVERIFY(add(request(u"later"_s, noon + 2000)));
        m_clock->set(noon + 1010);
        QTRY_COMPARE(m_server->handed, (QStringList{u"first"_s, u"second"_s}));
        QTRY_COMPARE(m_clock->alarm(), std::optional<qint64>(noon + 2000));
        QVERIFY(logged(u"notification dropped identifier=\"over\""_s));
        settle();
        QCOMPARE(onDisk(), QStringList{u"later"_s});
    }

    void aClockSetBackWaitsAgainAndDeliversNothingTwice()
    {
        QVERIFY(add(request(u"done"_s, noon)));
        QVERIFY(add(request(u"next"_s, noon + 10)));
        QTRY_COMPARE(m_server->handed, QStringList{u"done"_s});
        settle();
        m_clock->set(noon - 3600);
        QTRY_COMPARE(m_clock->alarm(), std::optional<qint64>(noon + 10));
        settle();
        QCOMPARE(m_server->handed, QStringList{u"done"_s});
        m_clock->set(noon + 10);
        QTRY_COMPARE(m_server->handed, (QStringList{u"done"_s, u"next"_s}));
        settle();
        m_clock->set(noon - 3600);
        settle();
        QCOMPARE(m_server->handed.size(), 2);
    }

    void aClockSetBackWhileTheServerIsAskedPostponesTheDelivery()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_clock->set(noon - 100);
        m_server->answer();
        settle();
        QVERIFY(m_server->handed.isEmpty());
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon));
        QCOMPARE(onDisk(), QStringList{u"a"_s});
    }

    void aClockSetForwardWhileTheServerIsAskedDropsExpiredRequests()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_clock->set(noon + 60);
        m_server->answer();
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(m_server->handed.isEmpty());
    }

    // Fire dates are absolute: when an hour repeats on the wall clock, each of the two delivers its own
    // requests.
    void daylightSavingMovesNothing_data()
    {
        QTest::addColumn<QDateTime>("from");
        QTest::newRow("spring") << QDateTime({2027, 3, 28}, {0, 30}, QTimeZone::utc());
        QTest::newRow("autumn") << QDateTime({2027, 10, 31}, {0, 30}, QTimeZone::utc());
    }

    void daylightSavingMovesNothing()
    {
        QFETCH(QDateTime, from);
        const QTimeZone berlin("Europe/Berlin");
        QVERIFY(berlin.offsetFromUtc(from) != berlin.offsetFromUtc(from.addSecs(3600)));
        qputenv("TZ", "Europe/Berlin");
        ::tzset();
        const qint64 start = from.toSecsSinceEpoch();
        m_clock->set(start);
        QStringList expected;
        for (int number = 0; number < 6; ++number) {
            expected.append(QString::number(number));
            QVERIFY(add(request(expected.constLast(), start + qint64{number} * 600 + 1)));
        }
        m_server->onDeliver = [&](const PendingRequest &delivered) {
            QCOMPARE(m_clock->now(), delivered.fireDate);
        };
        for (int second = 0; second < 3600; ++second) {
            const bool rings = m_clock->alarm() == m_clock->now() + 1;
            m_clock->tick();
            if (rings) {
                QTRY_VERIFY(m_clock->alarm() || m_keeper->isIdle());
            }
        }
        qputenv("TZ", "UTC");
        ::tzset();
        QCOMPARE(m_server->handed, expected);
    }

    void missedRequestsAreDeliveredOnlyUntilTheyExpire()
    {
        QVERIFY(add(request(u"start"_s, noon + 100, 20)));
        QVERIFY(add(request(u"finish"_s, noon + 90, 600)));
        m_keeper.reset();
        m_clock->set(noon + 120);
        restart();
        QTRY_COMPARE(m_server->handed, QStringList{u"finish"_s});
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(logged(u"notification dropped identifier=\"start\""_s));
    }
};

QUILLET_TEST(RequestKeeperClockTest, runTest<RequestKeeperClockTest>);
#include "RequestKeeperClockTest.moc"
