// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Waiting/WorkerPool.h"

#include "tests/support/TestProgram.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <memory>
#include <utility>

using namespace corvane;

namespace {

/// Counts the events that the main thread handles, except deletions of objects.
class EventCounter final : public QObject {
public:
    EventCounter() { QCoreApplication::instance()->installEventFilter(this); }

    int count = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::DeferredDelete ? 0 : 1;
        return false;
    }
};

} // namespace

class WorkerPoolTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aResultComesWithASingleEvent()
    {
        WorkerPool pool(1);
        EventCounter events;
        const auto answer = startOnPool(pool.threads(), [] { return 42; });
        QVERIFY(pool.threads().waitForDone());
        QVERIFY(!answer.isResolved());
        QCoreApplication::processEvents();
        QVERIFY(answer.isResolved());
        QCOMPARE(*answer.value(), 42);
        QCOMPARE(events.count, 1);
    }

    void aThreadEndsWithItsWork()
    {
        WorkerPool pool(1);
        const auto answer = startOnPool(pool.threads(), [] { return QThread::currentThread(); });
        QTRY_VERIFY(answer.isResolved());
        constexpr int deadline = 3000; // milliseconds
        QTRY_VERIFY_WITH_TIMEOUT((*answer.value())->isFinished(), deadline);
        const auto again = startOnPool(pool.threads(), [] { return 43; });
        QTRY_VERIFY(again.isResolved());
        QCOMPARE(*again.value(), 43);
    }

    void theWorkIsDestroyedBeforeItsResultIsDelivered()
    {
        WorkerPool pool(1);
        auto owned = std::make_shared<int>(42);
        const std::weak_ptr<int> weak = owned;
        const auto answer = startOnPool(pool.threads(), [owned = std::move(owned)] { return *owned; });
        QTRY_VERIFY(answer.isResolved());
        QVERIFY(weak.expired());
    }

    void aResultThatNobodyTakesIsDeletedWithThePool()
    {
        auto owned = std::make_shared<int>(42);
        const std::weak_ptr<int> weak = owned;
        {
            WorkerPool pool(1);
            const auto answer = startOnPool(pool.threads(), [owned = std::move(owned)] { return owned; });
            QVERIFY(pool.threads().waitForDone());
            QVERIFY(!answer.isResolved());
            QVERIFY(!weak.expired());
        }
        QVERIFY(weak.expired());
    }

    void droppedWorkIsNeverDelivered()
    {
        WorkerPool pool(1);
        QSemaphore mayEnd;
        const auto first = startOnPool(pool.threads(), [&mayEnd] {
            mayEnd.acquire();
            return 1;
        });
        auto owned = std::make_shared<int>(42);
        const std::weak_ptr<int> weak = owned;
        const auto second = startOnPool(pool.threads(), [owned = std::move(owned)] { return *owned; });
        pool.threads().clear();
        QVERIFY(weak.expired());
        mayEnd.release();
        QTRY_VERIFY(first.isResolved());
        QVERIFY(!second.isResolved());
    }
};

QUILLET_TEST(WorkerPoolTest, runTest<WorkerPoolTest>);
#include "WorkerPoolTest.moc"
