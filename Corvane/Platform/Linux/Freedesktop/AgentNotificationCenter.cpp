// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"

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

constexpr auto applicationId = "com.ordwinsoftware.Quillet"_L1;
constexpr auto agentName = "com.ordwinsoftware.Quillet.NotificationAgent"_L1;
constexpr auto agentPath = "/com/ordwinsoftware/Quillet/NotificationAgent"_L1;

Failure noSessionBus()
{
    return {u"there is no session bus"_s};
}

/// A date as the agent takes it, of seconds that are rounded already; none for one that lies beyond what it
/// can hold.
std::optional<qint64> secondsInRange(double seconds)
{
    constexpr double limit = 9223372036854775808.0;
    if (!(seconds >= -limit && seconds < limit)) {
        return std::nullopt;
    }
    return static_cast<qint64>(seconds);
}

/// The first `size` units of `text`, or one less where that would cut a character in two.
QString beginning(const QString &text, qsizetype size)
{
    return text.first(text.at(size - 1).isHighSurrogate() ? size - 1 : size);
}

/// Longer texts are no names of students and help nobody in a notification; a calendar that means harm may
/// ask for pages of them, of which the agent takes only so many.
constexpr qsizetype maximumTextLength = 300;

/// What the agent is given of a text. A null character would end it on the bus.
QString readablePart(QString text)
{
    text.replace(QChar::Null, QChar::ReplacementCharacter);
    return text.size() <= maximumTextLength ? text : beginning(text, maximumTextLength - 1) + u'…';
}

/// What the agent knows a request by: its identifier, or of an endless one the beginning and a digest of all
/// of it. Given such a short form it gives that back, so that what is answered as pending can be taken back.
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

/// Whether this error of a call means that there is no notification server and that none can be started.
bool saysThatThereIsNone(const QString &error)
{
    return error == "org.freedesktop.DBus.Error.ServiceUnknown"_L1 ||
           error == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1 ||
           error.startsWith("org.freedesktop.DBus.Error.Spawn."_L1) ||
           error.startsWith("org.freedesktop.systemd1."_L1);
}

} // namespace

// What the calls under way share, which may outlive the object.
struct AgentNotificationCenter::Link {
    using Call = std::function<QDBusPendingCall(NotificationAgentProxy &)>;

    QDBusConnection bus;
    Timeouts timeouts;
    /// Made once the bus has answered: its constructor asks the bus for the agent's owner and waits for the
    /// answer, which a bus that hangs would never give.
    std::unique_ptr<NotificationAgentProxy> agent;
    /// Set while the bus is being asked; tells whether it answered, in the order in which they came to wait.
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
            link->agent = std::make_unique<NotificationAgentProxy>(agentName, agentPath, link->bus);
            link->agent->setTimeout(static_cast<int>(link->timeouts.agent.count()));
        }
        link->reaching.reset();
        reaching.resolve(link->agent != nullptr);
    }

    /// The agent's answer to `call`, or why there is none. `forOlder` is for an agent of before an update,
    /// which does not know that call; it may be empty.
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
                // The answer may have come, and it be reset, when this returns.
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
        if (!gnomeAllowsNotifications(applicationId)) {
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
    // Shown at the beginning of its second, and not dropped before the end of its use.
    const auto fireDate = secondsInRange(std::floor(secondsSince1970(request.fireDate)));
    const auto expirationDate = secondsInRange(std::ceil(secondsSince1970(request.expirationDate)));
    if (!fireDate || !expirationDate) {
        co_return std::unexpected(Failure{u"the date of a notification is out of reach"_s});
    }
    // The agent has delivered it already if it had it: handed over once more it would come twice.
    if (static_cast<double>(*fireDate) <= secondsSince1970(currentDate())) {
        co_return {};
    }
    // Not made in the wait itself: GCC 12 destroys what a closure holds there twice.
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
    // Better with a sound than not at all.
    co_return co_await Link::tell(m_link, addQuietly, add);
}

} // namespace corvane
