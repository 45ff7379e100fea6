// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include <QObject>
#include <QRunnable>
#include <QThreadPool>

#include <chrono>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace corvane {

/// A pool of few threads for work that may be slow. Main thread only.
///
/// The destructor drops queued work, waits up to `courtesy` for running work, and abandons what does not end:
/// a recurrence rule or a server call that cannot be interrupted must not keep the program from ending.
class WorkerPool {
public:
    explicit WorkerPool(int threads, std::chrono::milliseconds courtesy = std::chrono::seconds(1))
        : m_courtesy(courtesy)
    {
        m_pool->setMaxThreadCount(threads);
        // A thread ends with its work: one that waited for more would wake up only to end.
        m_pool->setExpiryTimeout(0);
    }
    ~WorkerPool()
    {
        m_pool->clear();
        if (m_pool->waitForDone(static_cast<int>(m_courtesy.count()))) {
            delete m_pool;
            return;
        }
        // A thread still uses the pool: keep it reachable for the leak checker until the process ends.
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): without memory for a pointer the program ends.
        static auto &left = *new std::vector<QThreadPool *>;
        left.push_back(m_pool);
    }
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    [[nodiscard]] QThreadPool &threads() { return *m_pool; }

    /// Makes up for a thread that is overdue, so that other work can run; removeThread() once it has
    /// returned.
    void addThread() { m_pool->setMaxThreadCount(m_pool->maxThreadCount() + 1); }
    void removeThread() { m_pool->setMaxThreadCount(m_pool->maxThreadCount() - 1); }

private:
    std::chrono::milliseconds m_courtesy;
    QThreadPool *m_pool = new QThreadPool;
};

/// One piece of work for a pool, and the event that delivers its result.
template <typename Work>
class PoolJob final : public QRunnable {
public:
    using Result = std::invoke_result_t<Work &>;
    using Delivery = Pending<std::shared_ptr<Result>>;

    PoolJob(QThreadPool &pool, Work work, Delivery delivery)
        : m_pool(pool)
        , m_work(std::move(work))
        , m_delivery(std::move(delivery))
    {
    }

    void run() override
    {
        auto result = std::make_shared<Result>((*m_work)());
        m_work.reset();
        // A single event, so that the main thread wakes up once. It takes the delivery along, because that
        // belongs to the main thread. The pool lives there, too, and outlives its threads; if it is deleted
        // before the event is handled, so is the event.
        QMetaObject::invokeMethod(
            &m_pool,
            [delivery = std::move(m_delivery), result = std::move(result)] { delivery.resolve(result); },
            Qt::QueuedConnection);
    }

private:
    QThreadPool &m_pool;
    std::optional<Work> m_work;
    Delivery m_delivery;
};

/// Runs `work` on a thread of `pool` and delivers its result on the main thread. Values in, values out. If
/// the pool drops it, the result never arrives.
template <typename Work>
[[nodiscard]] auto startOnPool(QThreadPool &pool, Work work)
{
    typename PoolJob<Work>::Delivery pending;
    pool.start(new PoolJob<Work>(pool, std::move(work), pending)); // the pool deletes it
    return pending;
}

} // namespace corvane
