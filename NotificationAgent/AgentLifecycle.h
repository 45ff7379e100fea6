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

/// Holds the lock of one queue: the kernel gives it back however the agent ends.
class QueueLock {
public:
    /// `path` is the lock file's, which is made and stays.
    explicit QueueLock(QString path) : m_path(std::move(path)) {}
    ~QueueLock();
    QueueLock(const QueueLock &) = delete;
    QueueLock &operator=(const QueueLock &) = delete;

    enum class Attempt { locked, heldByOther, impossible };
    [[nodiscard]] Attempt tryLock();

    /// Gives the lock back before its time.
    void unlock();

private:
    QString m_path;
    int m_file = -1;
};

/// The agent's time on the bus: it takes the bus name, which is what others wait for, once all is ready;
/// gives it up when nothing has been pending for a while and no program counts on it; and ends with its bus.
/// Main thread only.
///
/// From the loss of the name on a service manager takes the agent for one that is over and ends it with
/// SIGTERM. So all is in order before the name is given up, the signal is ignored from there on, and the name
/// is not taken again: for what was called just before, the bus is asked to start the next agent.
class AgentLifecycle final : public QObject {
    Q_OBJECT

public:
    static constexpr auto serviceName = "com.ordwinsoftware.Quillet.NotificationAgent";
    static constexpr auto objectPath = "/com/ordwinsoftware/Quillet/NotificationAgent";

    /// How long the agent stays when there is nothing to do; a program that has just taken everything back
    /// may be about to add.
    static constexpr std::chrono::milliseconds idleTime{5000};

    /// `keeper` and `watch` are borrowed; `log` takes a line.
    AgentLifecycle(QDBusConnection sessionBus, RequestKeeper &keeper, const ProgramWatch &watch,
                   std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// Takes the name, then starts the keeper. The object must be registered by now.
    void begin();

public Q_SLOTS:
    /// Something has happened: counts the idle time anew.
    void updateIdleTimer();

    /// Gives the name up, then ends; called when the idle time is over.
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
