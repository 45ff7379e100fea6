// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/AgentGreeting.h"

#include "Corvane/Utilities/Names.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// After a failed greeting, what the agent knows is unknown.
constexpr qint64 unknown = -1;
constexpr int helloTimeoutMilliseconds = 15'000;
/// The longest that the program's end waits for a bus that hangs.
constexpr int goodbyeTimeoutMilliseconds = 500;

QDBusMessage agentCall(const QString &method)
{
    return QDBusMessage::createMethodCall(names::agent, names::agentPath, names::agent, method);
}

} // namespace

AgentGreeting::AgentGreeting(QDBusConnection sessionBus, std::function<void(const QString &)> log,
                             std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(sessionBus))
    , m_log(std::move(log))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &AgentGreeting::greet);
    auto *watcher =
        new QDBusServiceWatcher(names::agent, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                ++m_agentNumber;
                m_told = 0;
                m_isUnknown = false;
                if (newOwner.isEmpty()) {
                    m_patience.start();
                } else {
                    greet();
                }
            });
}

AgentGreeting::~AgentGreeting()
{
    if (!m_bus.isConnected()) {
        return;
    }
    // Does not wait for the agent, which may hang. But the message must leave this process, which is about to
    // end: the bus answers GetId only after it has taken all earlier messages.
    QDBusMessage goodbye = agentCall(u"Goodbye"_s);
    goodbye.setAutoStartService(false);
    m_bus.send(goodbye);
    m_bus.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                              u"org.freedesktop.DBus"_s, u"GetId"_s),
               QDBus::Block, goodbyeTimeoutMilliseconds);
}

void AgentGreeting::setLessons(const std::vector<Lesson> &lessons)
{
    m_lessonsUntil.reset();
    for (const Lesson &lesson : lessons) {
        m_lessonsUntil = std::max(m_lessonsUntil.value_or(lesson.endTime()), lesson.endTime());
    }
    greet();
}

void AgentGreeting::greet()
{
    const bool doLessonsRemain = m_lessonsUntil && *m_lessonsUntil > currentDate();
    const qint64 until =
        doLessonsRemain ? static_cast<qint64>(std::ceil(secondsSince1970(*m_lessonsUntil))) : 0;
    if (until == m_told || m_isUnknown || !m_bus.isConnected()) {
        return;
    }
    m_told = until;
    QDBusMessage hello = agentCall(u"Hello"_s);
    // Do not start an agent only to tell it that nothing remains.
    hello.setAutoStartService(doLessonsRemain);
    hello << until << qEnvironmentVariable("DISPLAY") << qEnvironmentVariable("WAYLAND_DISPLAY")
          << qEnvironmentVariable("XAUTHORITY");
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(hello, helloTimeoutMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, agent = m_agentNumber] {
        call->deleteLater();
        handleAnswer(call->reply(), agent);
    });
}

void AgentGreeting::handleAnswer(const QDBusMessage &answer, int agent)
{
    if (answer.type() == QDBusMessage::ReplyMessage || agent != m_agentNumber) {
        return;
    }
    if (QDBusError(answer).type() == QDBusError::UnknownMethod) {
        m_isUnknown = true;
        m_log(u"the notification agent is of an earlier version: a crash would not be mended"_s);
    } else {
        // The next load tries again.
        m_told = unknown;
        m_log(u"notification agent not greeted error="_s + answer.errorMessage());
    }
}

} // namespace corvane
