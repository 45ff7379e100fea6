// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"
#include "Corvane/Utilities/Names.h"

#include "Corvane/Platform/Linux/Freedesktop/GnomeNotificationSwitch.h"
#include "Corvane/Utilities/PlainText.h"
#include "Corvane/Utilities/Spawn.h"

// Generated from the description of the agent's interface.
#include <notificationagentproxy.h>

#include <qcoro/qcorodbuspendingcall.h>

#include <QCryptographicHash>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <cmath>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

Failure noSessionBus()
{
    return {u"there is no session bus"_s};
}

/// Whole seconds as the agent's date type; none if they are out of its range.
std::optional<qint64> secondsInRange(double seconds)
{
    constexpr double limit = 9223372036854775808.0;
    if (!(seconds >= -limit && seconds < limit)) {
        return std::nullopt;
    }
    return static_cast<qint64>(seconds);
}

/// The first `size` UTF-16 units of `text`, or one less rather than split a surrogate pair.
QString beginning(const QString &text, qsizetype size)
{
    return text.first(text.at(size - 1).isHighSurrogate() ? size - 1 : size);
}

/// In UTF-16 units. A longer text is not a student's name, and useless in a notification. A malicious
/// calendar may contain pages of text, and the agent's capacity is limited.
constexpr qsizetype maximumTextLength = 300;

/// The part of a text that the agent gets. A null character would end the text on the bus.
QString readablePart(QString text)
{
    text.replace(QChar::Null, QChar::ReplacementCharacter);
    return text.size() <= maximumTextLength ? text : beginning(text, maximumTextLength - 1) + u'…';
}

/// The identifier that the agent uses for a request. An overlong one is replaced by its beginning and a
/// digest of the whole. Such a short form maps to itself, so that identifiers reported as pending can be
/// removed.
QString agentIdentifier(const QString &identifier)
{
    constexpr qsizetype kept = maximumTextLength - 100;
    if (identifier.size() <= maximumTextLength && !identifier.contains(QChar::Null)) {
        return identifier;
    }
    const QByteArray digest = QCryptographicHash::hash(identifier.toUtf8(), QCryptographicHash::Sha256);
    return readablePart(identifier.size() <= kept ? identifier : beginning(identifier, kept)) + u'…' +
           QString::fromLatin1(digest.toHex());
}

/// Whether this error means that there is no notification server and that none can be started.
bool saysThatThereIsNone(const QString &error)
{
    return error == "org.freedesktop.DBus.Error.ServiceUnknown"_L1 ||
           error == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1 ||
           error.startsWith("org.freedesktop.DBus.Error.Spawn."_L1) ||
           error.startsWith("org.freedesktop.systemd1."_L1);
}

} // namespace

// Shared by the calls in progress, which may outlive the object.
struct AgentNotificationCenter::Link {
    using Call = std::function<QDBusPendingCall(NotificationAgentProxy &)>;

    QDBusConnection bus;
    Timeouts timeouts;
    /// Made once the bus has answered: its constructor asks the bus for the agent's owner and blocks until
    /// the answer, which never comes from a bus that hangs.
    std::unique_ptr<NotificationAgentProxy> agent;
    /// Set while the bus is being asked; tells whether it answered, and resumes the waiters in order.
    std::optional<Pending<bool>> reaching;

    Link(QDBusConnection sessionBus, Timeouts limits) : bus(std::move(sessionBus)), timeouts(limits) {}

    static QCoro::Task<void> makeAgent(std::shared_ptr<Link> link)
    {
        const Pending<bool> reaching = *link->reaching;
        const auto question = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"GetId"_s);
        const QDBusMessage answer =
            co_await link->bus.asyncCall(question, static_cast<int>(link->timeouts.bus.count()));
        if (answer.type() == QDBusMessage::ReplyMessage) {
            link->agent = std::make_unique<NotificationAgentProxy>(names::agent, names::agentPath, link->bus);
            link->agent->setTimeout(static_cast<int>(link->timeouts.agent.count()));
        }
        link->reaching.reset();
        reaching.resolve(link->agent != nullptr);
    }

    /// The agent's answer to `call`, or the reason for having none. `forOlder` replaces `call` for an agent
    /// from before an update, which does not know it; it may be empty.
    static QCoro::Task<std::expected<QDBusMessage, Failure>> ask(std::shared_ptr<Link> link, Call call,
                                                                 Call forOlder)
    {
        if (!link->bus.isConnected()) {
            co_return std::unexpected(noSessionBus());
        }
        if (!link->agent) {
            const Pending<bool> reaching = link->reaching.value_or(Pending<bool>());
            if (!link->reaching) {
                link->reaching = reaching;
                // makeAgent() may have finished and reset link->reaching before spawn() returns.
                spawn(makeAgent(link));
            }
            co_await reaching.untilResolved();
            if (!reaching.value()) {
                co_return std::unexpected(Failure{u"the session bus does not answer"_s});
            }
        }
        if (!link->bus.isConnected()) {
            co_return std::unexpected(noSessionBus());
        }
        QDBusMessage answer = co_await call(*link->agent);
        if (forOlder && QDBusError(answer).type() == QDBusError::UnknownMethod) {
            answer = co_await forOlder(*link->agent);
        }
        if (answer.type() != QDBusMessage::ReplyMessage) {
            co_return std::unexpected(Failure{u"the notification agent: "_s + answer.errorMessage()});
        }
        co_return answer;
    }

    static QCoro::Task<std::expected<void, Failure>> tell(std::shared_ptr<Link> link, Call call,
                                                          Call forOlder = {})
    {
        const auto answer = co_await ask(link, call, forOlder);
        if (!answer) {
            co_return std::unexpected(answer.error());
        }
        co_return {};
    }

    static QCoro::Task<std::expected<bool, Failure>> authorization(std::shared_ptr<Link> link)
    {
        if (!link->bus.isConnected()) {
            co_return std::unexpected(noSessionBus());
        }
        if (!gnomeAllowsNotifications(names::application)) {
            co_return false;
        }
        const auto question = QDBusMessage::createMethodCall(
            u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
            u"org.freedesktop.Notifications"_s, u"GetServerInformation"_s);
        const QDBusMessage answer =
            co_await link->bus.asyncCall(question, static_cast<int>(link->timeouts.server.count()));
        if (!link->bus.isConnected()) {
            co_return std::unexpected(noSessionBus());
        }
        co_return answer.type() == QDBusMessage::ReplyMessage || !saysThatThereIsNone(answer.errorName());
    }

    static QCoro::Task<std::expected<QStringList, Failure>> pending(std::shared_ptr<Link> link)
    {
        const Call call = [](NotificationAgentProxy &agent) { return agent.PendingRequests(); };
        const auto answer = co_await ask(link, call, {});
        if (!answer) {
            co_return std::unexpected(answer.error());
        }
        const QDBusPendingReply<QStringList> reply = *answer;
        if (reply.isError()) {
            co_return std::unexpected(Failure{u"the notification agent: "_s + reply.error().message()});
        }
        co_return reply.value();
    }
};

AgentNotificationCenter::AgentNotificationCenter(QDBusConnection sessionBus, Timeouts timeouts)
    : m_link(std::make_shared<Link>(std::move(sessionBus), timeouts))
{
}

AgentNotificationCenter::~AgentNotificationCenter() = default;

QCoro::Task<std::expected<bool, Failure>> AgentNotificationCenter::requestAuthorization()
{
    return Link::authorization(m_link);
}

QCoro::Task<std::expected<QStringList, Failure>> AgentNotificationCenter::pendingNotificationRequests()
{
    return Link::pending(m_link);
}

QCoro::Task<std::expected<void, Failure>>
AgentNotificationCenter::removePendingNotificationRequests(QStringList identifiers)
{
    for (QString &identifier : identifiers) {
        identifier = agentIdentifier(identifier);
    }
    return Link::tell(m_link, [identifiers](NotificationAgentProxy &agent) {
        return agent.RemovePendingRequests(identifiers);
    });
}

QCoro::Task<std::expected<void, Failure>> AgentNotificationCenter::add(NotificationRequest request)
{
    // In whole seconds: shown no later than requested, and not dropped before its use ends.
    const auto fireDate = secondsInRange(std::floor(secondsSince1970(request.fireDate)));
    const auto expirationDate = secondsInRange(std::ceil(secondsSince1970(request.expirationDate)));
    if (!fireDate || !expirationDate) {
        co_return std::unexpected(Failure{u"the date of a notification is out of reach"_s});
    }
    // If the agent had it, it has delivered it already; another add would deliver it twice.
    if (static_cast<double>(*fireDate) <= secondsSince1970(currentDate())) {
        co_return {};
    }
    // Not made within co_await: GCC 12 destroys the captures of a closure made there twice.
    const Link::Call add = [request, fire = *fireDate,
                            expiration = *expirationDate](NotificationAgentProxy &agent) {
        return agent.Add(agentIdentifier(request.identifier), plainText(readablePart(request.title)),
                         plainText(readablePart(request.body)), request.categoryIdentifier, fire, expiration);
    };
    if (!request.isQuiet) {
        co_return co_await Link::tell(m_link, add);
    }
    const Link::Call addQuietly = [request, fire = *fireDate,
                                   expiration = *expirationDate](NotificationAgentProxy &agent) {
        return agent.AddQuietly(agentIdentifier(request.identifier), plainText(readablePart(request.title)),
                                plainText(readablePart(request.body)), request.categoryIdentifier, fire,
                                expiration);
    };
    // For an older agent: better with a sound than not at all.
    co_return co_await Link::tell(m_link, addQuietly, add);
}

} // namespace corvane
