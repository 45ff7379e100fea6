// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/RecordingAgent.h"

#include <recordingagentadaptor.h>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto name = "com.ordwinsoftware.Quillet.NotificationAgent"_L1;
constexpr auto path = "/com/ordwinsoftware/Quillet/NotificationAgent"_L1;

} // namespace

RecordingAgent::RecordingAgent(QDBusConnection bus) : m_bus(std::move(bus))
{
    new RecordingAgentAdaptor(this);
    if (!m_bus.registerObject(path, this) || !m_bus.registerService(name)) {
        qFatal("the recording agent cannot take its place on the bus");
    }
}

RecordingAgent::~RecordingAgent()
{
    m_bus.unregisterObject(path);
    m_bus.unregisterService(name);
}

bool RecordingAgent::isServed(const QString &call)
{
    calls.append(call);
    if (hangs) {
        setDelayedReply(true);
        unansweredCalls.push_back(message());
        return false;
    }
    if (!refusal.isEmpty()) {
        sendErrorReply(QDBusError::Failed, refusal);
        return false;
    }
    return true;
}

QStringList RecordingAgent::PendingRequests()
{
    QStringList identifiers;
    if (isServed(u"PendingRequests"_s)) {
        for (const Added &added : pending) {
            identifiers.append(added.identifier);
        }
    }
    return identifiers;
}

void RecordingAgent::RemovePendingRequests(const QStringList &identifiers)
{
    if (isServed(u"RemovePendingRequests "_s + identifiers.join(u", "_s))) {
        std::erase_if(pending, [&](const Added &added) { return identifiers.contains(added.identifier); });
    }
}

void RecordingAgent::Add(const QString &identifier, const QString &title, const QString &body,
                         const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate)
{
    if (isServed(u"Add "_s + identifier)) {
        keep({identifier, title, body, categoryIdentifier, fireDate, expirationDate});
    }
}

void RecordingAgent::AddQuietly(const QString &identifier, const QString &title, const QString &body,
                                const QString &categoryIdentifier, qlonglong fireDate,
                                qlonglong expirationDate)
{
    if (isKnownAndServed(u"AddQuietly "_s + identifier)) {
        keep({identifier, title, body, categoryIdentifier, fireDate, expirationDate, true});
    }
}

void RecordingAgent::Hello(qlonglong lessonsUntil, const QString &display, const QString &waylandDisplay,
                           const QString &authority)
{
    isKnownAndServed(
        u"Hello %1 \"%2\" \"%3\" \"%4\""_s.arg(lessonsUntil).arg(display, waylandDisplay, authority));
}

void RecordingAgent::Goodbye()
{
    isKnownAndServed(u"Goodbye"_s);
}

bool RecordingAgent::isKnownAndServed(const QString &call)
{
    if (lacksNewerMethods) {
        calls.append(u"unknown "_s + call);
        sendErrorReply(QDBusError::UnknownMethod, u"No such method"_s);
        return false;
    }
    return isServed(call);
}

void RecordingAgent::keep(const Added &request)
{
    std::erase_if(pending, [&](const Added &added) { return added.identifier == request.identifier; });
    pending.push_back(request);
}

} // namespace corvane
