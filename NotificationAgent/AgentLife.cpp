// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLife.h"

#include "NotificationAgent/RequestKeeper.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int timeoutMilliseconds = 10'000;

// Of the bus's RequestName.
constexpr uint doNotQueue = 4;
constexpr uint isOwner = 1;
constexpr uint isOwnerAlready = 4;

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                          u"org.freedesktop.DBus"_s, method);
}

} // namespace

QueueLock::~QueueLock()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

QueueLock::Attempt QueueLock::tryLock()
{
    if (m_file < 0) {
        QDir().mkpath(QFileInfo(m_path).path());
        m_file =
            ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (m_file < 0) {
            return Attempt::impossible;
        }
    }
    if (::flock(m_file, LOCK_EX | LOCK_NB) == 0) {
        return Attempt::locked;
    }
    return errno == EWOULDBLOCK ? Attempt::heldByOther : Attempt::impossible;
}

AgentLife::AgentLife(QDBusConnection sessionBus, RequestKeeper &keeper,
                     std::function<void(const QString &)> log, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(sessionBus))
    , m_keeper(keeper)
    , m_log(std::move(log))
{
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &AgentLife::giveUpName);
    connect(&m_keeper, &RequestKeeper::stirred, this, &AgentLife::stir);
    m_bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
                  this, SLOT(loseBus()));
}

void AgentLife::begin()
{
    askForName();
}

void AgentLife::askForName()
{
    auto call = busCall(u"RequestName"_s);
    call << QString::fromLatin1(serviceName) << doNotQueue;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, timeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusReply<uint> reply = watcher->reply();
        if (!reply.isValid() || (reply.value() != isOwner && reply.value() != isOwnerAlready)) {
            m_log(u"the bus does not give the name: "_s +
                  (reply.isValid() ? u"it is taken"_s : reply.error().message()));
            // Not a failure that a new start would mend.
            Q_EMIT ended(0);
            return;
        }
        m_keeper.start();
        stir();
    });
}

void AgentLife::stir()
{
    m_hasCalls = true;
    if (m_keeper.isIdle() && !m_isLeaving) {
        m_idle.start(idleTime);
    } else {
        m_idle.stop();
    }
}

void AgentLife::giveUpName()
{
    // First the name: from the bus's answer on, calls go to the next agent, and all that came before are
    // here.
    m_isLeaving = true;
    m_hasCalls = false;
    auto call = busCall(u"ReleaseName"_s);
    call << QString::fromLatin1(serviceName);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, timeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        // What has come is dispatched before this.
        QTimer::singleShot(0, this, [this] {
            if (m_hasCalls || !m_keeper.isIdle()) {
                m_isLeaving = false;
                askForName();
                return;
            }
            m_keeper.tidyUp();
            Q_EMIT ended(0);
        });
    });
}

void AgentLife::loseBus()
{
    m_log(u"session bus lost"_s);
    Q_EMIT ended(0);
}

} // namespace corvane
