// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestQueue.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

PendingRequest queuedRequest(const QString &identifier, qint64 fireDate, const QString &body = u"b"_s)
{
    return {identifier, u"t"_s, body, u"quillet.lesson"_s, fireDate, fireDate + 60};
}

} // namespace

class RequestQueueTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requestsAreOrderedByFireDate()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"late"_s, 30));
        queue.add(queuedRequest(u"early"_s, 10));
        queue.add(queuedRequest(u"middle"_s, 20));
        QCOMPARE(queue.identifiers(), (QStringList{u"early"_s, u"middle"_s, u"late"_s}));
    }

    void requestsOfTheSameSecondKeepTheirOrderOfArrival()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"b"_s, 10));
        queue.add(queuedRequest(u"a"_s, 10));
        QCOMPARE(queue.identifiers(), (QStringList{u"b"_s, u"a"_s}));
    }

    void aRequestReplacesTheOneWithItsIdentifier()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        queue.add(queuedRequest(u"a"_s, 20, u"new"_s));
        QCOMPARE(queue.size(), 1);
        QCOMPARE(queue.requests().front(), queuedRequest(u"a"_s, 20, u"new"_s));
        QVERIFY(!queue.firstDue(19, {}));
    }

    void aRequestIsDueFromItsSecondOn()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        QVERIFY(!queue.firstDue(9, {}));
        QCOMPARE(queue.firstDue(10, {})->identifier, u"a"_s);
        QCOMPARE(queue.firstDue(1000, {})->identifier, u"a"_s);
    }

    void exceptedRequestsAreSkipped()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        queue.add(queuedRequest(u"b"_s, 11));
        QCOMPARE(queue.firstDue(20, {u"a"_s})->identifier, u"b"_s);
        QVERIFY(!queue.firstDue(20, {u"a"_s, u"b"_s}));
    }

    void theNextFireDateIsInTheFuture()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        queue.add(queuedRequest(u"b"_s, 20));
        QCOMPARE(queue.nextFireDate(9), std::optional<qint64>(10));
        QCOMPARE(queue.nextFireDate(10), std::optional<qint64>(20));
        QVERIFY(!queue.nextFireDate(20));
    }

    void expiredRequestsAreTakenOut()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        queue.add(queuedRequest(u"b"_s, 20));
        queue.add(queuedRequest(u"c"_s, 90));
        QVERIFY(queue.takeExpired(69).empty());
        QVERIFY(queue.takeExpired(70) == std::vector{queuedRequest(u"a"_s, 10)});
        QVERIFY(queue.takeExpired(89) == std::vector{queuedRequest(u"b"_s, 20)});
        QCOMPARE(queue.identifiers(), QStringList{u"c"_s});
    }

    void aRequestCanBeTakenOnce()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        QCOMPARE(*queue.take(u"a"_s), queuedRequest(u"a"_s, 10));
        QVERIFY(!queue.take(u"a"_s));
        QVERIFY(queue.isEmpty());
        QCOMPARE(queue.textSizeWithout({}), 0);
    }

    void aCopyIsASnapshot()
    {
        RequestQueue queue;
        queue.add(queuedRequest(u"a"_s, 10));
        const RequestQueue before = queue;
        queue.add(queuedRequest(u"b"_s, 5));
        queue.take(u"a"_s);
        QCOMPARE(before.identifiers(), QStringList{u"a"_s});
        QCOMPARE(queue.identifiers(), QStringList{u"b"_s});
    }

    void theTotalTextLengthIsCounted()
    {
        RequestQueue queue;
        queue.add({u"12"_s, u"3"_s, u"456"_s, u"7890"_s, 1, 2});
        QCOMPARE(queue.textSizeWithout({}), 10);
        QCOMPARE(queue.textSizeWithout(u"12"_s), 0);
        queue.add({u"12"_s, u"3"_s, {}, {}, 1, 2});
        QCOMPARE(queue.textSizeWithout({}), 3);
    }
};

QUILLET_TEST(RequestQueueTest, runTest<RequestQueueTest>);
#include "RequestQueueTest.moc"
