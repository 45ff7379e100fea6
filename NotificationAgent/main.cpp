// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Names.h"
#include "NotificationAgent/AgentInterface.h"
#include "NotificationAgent/AgentLifecycle.h"
#include "NotificationAgent/AgentLog.h"
#include "NotificationAgent/BusCall.h"
#include "NotificationAgent/BusProgram.h"
#include "NotificationAgent/CanberraNotificationSound.h"
#include "NotificationAgent/FreedesktopNotificationServer.h"
#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/ProgramWatch.h"
#include "NotificationAgent/RequestFile.h"
#include "NotificationAgent/RequestKeeper.h"
#include "NotificationAgent/TimerfdClock.h"
#include "notificationagentadaptor.h"

#include <malloc.h>
#include <signal.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>

#include <chrono>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace corvane;

namespace {

// An agent that is ending releases its lock within this time.
constexpr std::chrono::milliseconds lockTimeout = 5s;
constexpr std::chrono::milliseconds lockInterval = 20ms;

LoginEntry userLoginEntry()
{
    return {QCoreApplication::applicationFilePath(), LoginEntry::userConfigHome()};
}

/// The parts of the agent. Created once the lock is held, because it reads the queue.
struct Agent {
    Agent(const QDBusConnection &bus, const AgentLog &agentLog)
        : log([&agentLog](const QString &line) { agentLog.log(line); })
        , connection(bus)
        , file(RequestFile::userPath(), log)
        , loginEntry(userLoginEntry())
        , server(bus, sound, {})
        , keeper(file, loginEntry, clock, server, log)
        , program(bus)
        , watch(clock, program, log)
        , interface(bus, keeper, watch, log)
        , lifecycle(bus, keeper, watch, log)
    {
        QObject::connect(&interface, &AgentInterface::called, &lifecycle, &AgentLifecycle::updateIdleTimer);
        QObject::connect(&lifecycle, &AgentLifecycle::ended, qApp,
                         [](int status) { QCoreApplication::exit(status); });
        new NotificationAgentAdaptor(&interface);
    }

    void begin()
    {
        if (!keeper.load()) {
            // A failure status makes a service manager try again.
            log(u"the queue is left as it is"_s);
            QCoreApplication::exit(1);
            return;
        }
        connection.registerObject(names::agentPath, &interface);
        lifecycle.begin();
    }

    std::function<void(const QString &)> log;
    QDBusConnection connection;
    RequestFile file;
    LoginEntry loginEntry;
    TimerfdClock clock;
    CanberraNotificationSound sound;
    FreedesktopNotificationServer server;
    RequestKeeper keeper;
    BusProgram program;
    ProgramWatch watch;
    AgentInterface interface;
    AgentLifecycle lifecycle;
};

/// Waits for the lock, then creates the agent.
void launch(QueueLock &lock, const QDeadlineTimer &deadline, const QDBusConnection &bus, const AgentLog &log,
            std::unique_ptr<Agent> &agent)
{
    const QueueLock::Attempt attempt = lock.tryLock();
    if (attempt == QueueLock::Attempt::heldByOther) {
        if (deadline.hasExpired()) {
            log.log(u"another agent keeps this queue"_s);
            QCoreApplication::exit(0);
            return;
        }
        QTimer::singleShot(lockInterval, qApp,
                           [&lock, deadline, bus, &log, &agent] { launch(lock, deadline, bus, log, agent); });
        return;
    }
    if (attempt == QueueLock::Attempt::impossible) {
        // Without the lock, the bus name still ensures that only one agent runs at a time.
        log.log(u"the queue cannot be locked"_s);
    }
    agent = std::make_unique<Agent>(bus, log);
    agent->begin();
}

/// At login: if requests are pending, has the bus start the agent, so that it is managed like one that a call
/// started; if the bus cannot start it, the agent runs in this process.
void launchAtLogin(QueueLock &lock, const QDBusConnection &bus, const AgentLog &log,
                   const std::function<void()> &launchHere)
{
    // Under the lock, because a running agent may be about to write its first request or to remove its last.
    // A running agent maintains its login entry itself.
    const QueueLock::Attempt attempt = lock.tryLock();
    if (attempt != QueueLock::Attempt::heldByOther && RequestFile(RequestFile::userPath()).isEmpty()) {
        // A killed agent left its login entry behind.
        if (attempt == QueueLock::Attempt::locked) {
            if (const auto removed = userLoginEntry().setPresent(false); !removed) {
                log.log(u"login entry "_s + removed.error());
            }
        }
        QCoreApplication::exit(0);
        return;
    }
    lock.unlock();
    auto call = busCall(u"StartServiceByName"_s);
    call << QString(names::agent) << 0U;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, busTimeout), qApp);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, qApp, [watcher, launchHere] {
        watcher->deleteLater();
        if (watcher->isError()) {
            launchHere();
        } else {
            QCoreApplication::exit(0);
        }
    });
}

} // namespace

int main(int argc, char *argv[])
{
    // The two threads are nearly always idle; an arena for each would waste memory.
    mallopt(M_ARENA_MAX, 1);
    // Turns an exceeded file size limit into a write error instead of the end of the process.
    ::signal(SIGXFSZ, SIG_IGN);
    ::signal(SIGPIPE, SIG_IGN);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"quillet-notification-agent"_s);

    const AgentLog log(AgentLog::userPath());
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        log.log(u"there is no session bus"_s);
        return 1;
    }
    QueueLock lock(RequestFile::userPath() + u".lock"_s);
    std::unique_ptr<Agent> agent;
    const auto launchHere = [&] { launch(lock, QDeadlineTimer(lockTimeout), bus, log, agent); };
    // Deferred to the event loop: exit() has no effect before the loop runs.
    QTimer::singleShot(0, &application, [&] {
        if (QCoreApplication::arguments().contains(u"--login"_s)) {
            launchAtLogin(lock, bus, log, launchHere);
        } else {
            launchHere();
        }
    });
    const int status = QCoreApplication::exec();
    agent.reset();
    return status;
}
