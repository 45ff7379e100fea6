// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentInterface.h"

#include "NotificationAgent/AgentLog.h"
#include "NotificationAgent/BusCall.h"
#include "NotificationAgent/ProgramWatch.h"
#include "NotificationAgent/RequestKeeper.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

const QString invalidArguments = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
const QString limitsExceeded = u"org.freedesktop.DBus.Error.LimitsExceeded"_s;
// The overhead of each string in an array on the bus, and the most bytes that a UTF-16 unit takes in UTF-8.
constexpr qint64 bytesPerString = 8;
constexpr qint64 maximumBytesPerUnit = 3;

const QString failed = u"org.freedesktop.DBus.Error.Failed"_s;
const QString accessDenied = u"org.freedesktop.DBus.Error.AccessDenied"_s;

} // namespace

AgentInterface::AgentInterface(QDBusConnection sessionBus, RequestKeeper &keeper, ProgramWatch &watch,
                               std::function<void(const QString &)> log, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(sessionBus))
    , m_keeper(keeper)
    , m_watch(watch)
    , m_log(std::move(log))
{
}

QStringList AgentInterface::PendingRequests()
{
    Q_EMIT called();
    QStringList identifiers = m_keeper.pendingRequests();
    if (calledFromDBus() && message().isReplyRequired()) {
        qint64 bytes = 0;
        for (const QString &identifier : std::as_const(identifiers)) {
            bytes += bytesPerString + identifier.size() * maximumBytesPerUnit;
        }
        if (!mayReplyWith(bytes)) {
            refuse(limitsExceeded, u"earlier answers have not been read yet"_s);
            return {};
        }
    }
    return identifiers;
}

// Replies wait in this process until the bus takes them; a caller that requests them faster would fill the
// memory.
bool AgentInterface::mayReplyWith(qint64 bytes)
{
    if (m_unacknowledgedReplyBytes > 0 &&
        m_unacknowledgedReplyBytes + bytes > maximumUnacknowledgedReplyBytes) {
        return false;
    }
    // Sent before the reply itself; its answer acknowledges the earlier replies.
    if (!m_isPingPending) {
        pingBus();
    }
    m_unacknowledgedReplyBytes += bytes;
    return true;
}

void AgentInterface::pingBus()
{
    m_isPingPending = true;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(busCall(u"GetId"_s), busTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, sent = m_unacknowledgedReplyBytes] {
                watcher->deleteLater();
                m_isPingPending = false;
                if (!watcher->isError()) {
                    m_unacknowledgedReplyBytes -= sent;
                }
                if (m_unacknowledgedReplyBytes > 0) {
                    pingBus();
                }
            });
}

void AgentInterface::RemovePendingRequests(const QStringList &identifiers)
{
    Q_EMIT called();
    if (identifiers.size() > maximumIdentifiers) {
        refuse(limitsExceeded, u"too many identifiers"_s);
        return;
    }
    m_keeper.remove(identifiers, answerLater());
}

void AgentInterface::Add(const QString &identifier, const QString &title, const QString &body,
                         const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate)
{
    add({identifier, title, body, categoryIdentifier, fireDate, expirationDate});
}

void AgentInterface::AddQuietly(const QString &identifier, const QString &title, const QString &body,
                                const QString &categoryIdentifier, qlonglong fireDate,
                                qlonglong expirationDate)
{
    add({identifier, title, body, categoryIdentifier, fireDate, expirationDate, true});
}

void AgentInterface::add(const PendingRequest &request)
{
    Q_EMIT called();
    const RequestQueue &queue = m_keeper.queue();
    const qint64 textSize = request.identifier.size() + request.title.size() + request.body.size() +
                            request.categoryIdentifier.size();
    if (request.identifier.size() > maximumIdentifierLength ||
        std::max({request.title.size(), request.body.size(), request.categoryIdentifier.size()}) >
            maximumTextLength) {
        refuse(limitsExceeded, u"a text is too long"_s);
    } else if (request.fireDate < 0 || request.fireDate > latestDate ||
               request.expirationDate <= request.fireDate || request.expirationDate > latestDate) {
        refuse(invalidArguments, u"a date is out of range"_s);
    } else if ((queue.size() >= maximumRequests && !queue.contains(request.identifier)) ||
               queue.textSizeWithout(request.identifier) + textSize > maximumTotalTextLength) {
        refuse(limitsExceeded, u"too much is pending"_s);
    } else {
        m_keeper.add(request, answerLater());
    }
}

void AgentInterface::Hello(qlonglong lessonsUntil, const QString &display, const QString &waylandDisplay,
                           const QString &authority)
{
    Q_EMIT called();
    if (std::max({display.size(), waylandDisplay.size(), authority.size()}) > maximumTextLength) {
        refuse(limitsExceeded, u"a text is too long"_s);
    } else if (lessonsUntil < 0 || lessonsUntil > latestDate) {
        refuse(invalidArguments, u"a date is out of range"_s);
    } else if (!calledFromDBus() ||
               !m_watch.greet(message().service(), lessonsUntil, {display, waylandDisplay, authority})) {
        refuse(accessDenied, u"this is not Quillet"_s);
    }
}

void AgentInterface::Goodbye()
{
    Q_EMIT called();
    if (!calledFromDBus() || !m_watch.takeLeave(message().service())) {
        refuse(accessDenied, u"this is not Quillet"_s);
    }
}

std::function<void(std::expected<void, QString>)> AgentInterface::answerLater()
{
    if (!calledFromDBus()) {
        return [](const std::expected<void, QString> &) {};
    }
    setDelayedReply(true);
    return [bus = connection(), call = message()](const std::expected<void, QString> &result) {
        if (call.isReplyRequired()) {
            bus.send(result ? call.createReply()
                            : call.createErrorReply(failed, u"the queue "_s + result.error()));
        }
    };
}

void AgentInterface::refuse(const QString &error, const QString &reason)
{
    if (calledFromDBus()) {
        setDelayedReply(true);
        if (message().isReplyRequired()) {
            connection().send(message().createErrorReply(error, reason));
        }
    }
    // Logs refusals 1, 10, 100 and so on, so that a million bad calls do not cost a million lines.
    ++m_refusals;
    qint64 power = 1;
    while (power < m_refusals) {
        power *= 10;
    }
    if (power == m_refusals) {
        const QString who = calledFromDBus() ? message().service() : QString();
        m_log(u"call refused number=%1 caller=%2 reason=%3"_s.arg(m_refusals)
                  .arg(quotedForLog(who), quotedForLog(reason)));
    }
}

} // namespace corvane
