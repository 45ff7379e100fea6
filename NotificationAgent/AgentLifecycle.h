// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <utility>

namespace corvane {

class ProgramWatch;
class RequestKeeper;

/// The lock of one queue. The kernel releases it however the agent ends.
class QueueLock {
public:
    /// `path` is the lock file, which is created if necessary and never removed.
    explicit QueueLock(QString path) : m_path(std::move(path)) {}
    ~QueueLock();
    QueueLock(const QueueLock &) = delete;
    QueueLock &operator=(const QueueLock &) = delete;

    enum class Attempt { locked, heldByOther, impossible };
    [[nodiscard]] Attempt tryLock();

    /// Releases the lock early.
    void unlock();

private:
    QString m_path;
    int m_file = -1;
};

/// The agent's life on the bus: takes the bus name, which callers wait for, once everything is ready;
/// releases it when nothing has been pending for `idleTime` and no program is watched; and ends with the bus.
/// Main thread only.
///
/// When the name is released, a service manager considers the agent stopped and ends it with SIGTERM. So
/// everything is tidied up before, and SIGTERM is ignored from then on. If requests arrived just before, the
/// bus is asked to start the next agent; only if it cannot, this one takes the name again.
class AgentLifecycle final : public QObject {
    Q_OBJECT

public:
    /// How long the agent stays without work; a program that has just withdrawn all requests may be about to
    /// add new ones.
    static constexpr std::chrono::milliseconds idleTime{5000};

    /// Borrows `keeper` and `watch`; `log` writes a line to the log.
    AgentLifecycle(QDBusConnection sessionBus, RequestKeeper &keeper, const ProgramWatch &watch,
                   std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// Requests the name, then starts the keeper. The bus object must be registered before.
    void begin();

public Q_SLOTS:
    /// Restarts the idle timer, or stops it while the agent is needed.
    void updateIdleTimer();

    /// Releases the name, then ends; called after the idle time.
    void releaseName();

Q_SIGNALS:
    void ended(int status);

private:
    void requestName();
    void handOver();

    QDBusConnection m_bus;
    RequestKeeper &m_keeper;
    const ProgramWatch &m_watch;
    std::function<void(const QString &)> m_log;
    QTimer m_idle;
    bool m_isLeaving = false;

private Q_SLOTS:
    void busDisconnected();
};

} // namespace corvane
