// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLifecycle.h"

#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/RegularFile.h"
#include "NotificationAgent/BusCall.h"
#include "NotificationAgent/ProgramWatch.h"
#include "NotificationAgent/RequestKeeper.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <cerrno>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int timeoutMilliseconds = 10'000;

// A flag and replies of the bus's RequestName.
constexpr uint doNotQueue = 4;
constexpr uint isOwner = 1;
constexpr uint isOwnerAlready = 4;

} // namespace

QueueLock::~QueueLock()
{
    unlock();
}

void QueueLock::unlock()
{
    if (m_file >= 0) {
        ::close(m_file);
        m_file = -1;
    }
}

QueueLock::Attempt QueueLock::tryLock()
{
    if (m_file < 0) {
        [[maybe_unused]] const auto made = makePrivateFolder(QFile::encodeName(QFileInfo(m_path).path()));
        m_file = ::open(QFile::encodeName(m_path).constData(),
                        O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
        if (m_file < 0) {
            return Attempt::impossible;
        }
    }
    if (::flock(m_file, LOCK_EX | LOCK_NB) == 0) {
        return Attempt::locked;
    }
    return errno == EWOULDBLOCK ? Attempt::heldByOther : Attempt::impossible;
}

AgentLifecycle::AgentLifecycle(QDBusConnection sessionBus, RequestKeeper &keeper, const ProgramWatch &watch,
                               std::function<void(const QString &)> log, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(sessionBus))
    , m_keeper(keeper)
    , m_watch(watch)
    , m_log(std::move(log))
{
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &AgentLifecycle::releaseName);
    connect(&m_keeper, &RequestKeeper::activityOccurred, this, &AgentLifecycle::updateIdleTimer);
    connect(&m_watch, &ProgramWatch::activityOccurred, this, &AgentLifecycle::updateIdleTimer);
    m_bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
                  this, SLOT(busDisconnected()));
}

void AgentLifecycle::begin()
{
    requestName();
}

void AgentLifecycle::requestName()
{
    auto call = busCall(u"RequestName"_s);
    call << QString(names::agent) << doNotQueue;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, timeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusReply<uint> reply = watcher->reply();
        if (!reply.isValid() || (reply.value() != isOwner && reply.value() != isOwnerAlready)) {
            m_log(u"the bus does not give the name: "_s +
                  (reply.isValid() ? u"it is taken"_s : reply.error().message()));
            // Status 0: a restart by the service manager would not help.
            Q_EMIT ended(0);
            return;
        }
        m_keeper.start();
        updateIdleTimer();
    });
}

void AgentLifecycle::updateIdleTimer()
{
    if (m_keeper.isIdle() && !m_watch.isWatching() && !m_isLeaving) {
        m_idle.start(idleTime);
    } else {
        m_idle.stop();
    }
}

void AgentLifecycle::releaseName()
{
    m_isLeaving = true;
    m_keeper.stopDelivering();
    m_keeper.tidyUp();
    ::signal(SIGTERM, SIG_IGN);
    // Once the bus replies, new calls go to the next agent, and all earlier ones have arrived here.
    auto call = busCall(u"ReleaseName"_s);
    call << QString(names::agent);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, timeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        // Calls that have arrived are dispatched first.
        QTimer::singleShot(0, this, &AgentLifecycle::handOver);
    });
}

void AgentLifecycle::handOver()
{
    m_keeper.writeNow();
    QPointer<QDBusPendingCallWatcher> starting;
    if (m_keeper.isIdle()) {
        m_keeper.tidyUp();
    } else {
        // Requests arrived while the name was being released.
        m_log(u"left to the next agent requests="_s + QString::number(m_keeper.queue().size()));
        auto start = busCall(u"StartServiceByName"_s);
        start << QString(names::agent) << 0U;
        starting = new QDBusPendingCallWatcher(m_bus.asyncCall(start, timeoutMilliseconds), this);
    }
    // Does not wait for the start: the next agent waits for the lock, and so for the end of this one. The bus
    // replies to this last call once it has begun, or refused, the start.
    auto *asked =
        new QDBusPendingCallWatcher(m_bus.asyncCall(busCall(u"GetId"_s), timeoutMilliseconds), this);
    connect(asked, &QDBusPendingCallWatcher::finished, this, [this, asked, starting] {
        asked->deleteLater();
        if (starting && starting->isFinished() && starting->isError()) {
            // The bus cannot start the agent, so no service manager looks after this one either: it carries
            // on.
            starting->deleteLater();
            ::signal(SIGTERM, SIG_DFL);
            m_isLeaving = false;
            requestName();
            return;
        }
        Q_EMIT ended(0);
    });
}

void AgentLifecycle::busDisconnected()
{
    m_log(u"session bus lost"_s);
    Q_EMIT ended(0);
}

} // namespace corvane
