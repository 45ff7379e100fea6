// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>

#include <chrono>
#include <memory>
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

/// Runs `work` on a thread of `pool` and delivers its result on the main thread. Values in, values out. If
/// the pool drops it, the result never arrives.
template <typename Work>
[[nodiscard]] auto startOnPool(QThreadPool &pool, Work work)
{
    using Result = decltype(work());
    Pending<std::shared_ptr<Result>> pending;
    QPromise<std::shared_ptr<Result>> promise;
    auto *watcher = new QFutureWatcher<std::shared_ptr<Result>>;
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, [watcher, pending] {
        if (watcher->future().resultCount() > 0) {
            pending.resolve(watcher->result());
        }
        watcher->deleteLater();
    });
    promise.start();
    watcher->setFuture(promise.future());
    // QThreadPool needs a copyable function, but a promise can only be moved.
    pool.start([promise = std::make_shared<QPromise<std::shared_ptr<Result>>>(std::move(promise)),
                work = std::make_shared<Work>(std::move(work))]() mutable {
        promise->addResult(std::make_shared<Result>((*work)()));
        work.reset();
        promise->finish();
    });
    return pending;
}

} // namespace corvane
