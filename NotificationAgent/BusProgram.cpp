// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/BusProgram.h"

#include "Corvane/Utilities/Names.h"
#include "NotificationAgent/BusCall.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

QDBusPendingCall askForOwner(const QDBusConnection &bus)
{
    auto call = busCall(u"GetNameOwner"_s);
    call << QString(names::application);
    return bus.asyncCall(call, busTimeout);
}

} // namespace

BusProgram::BusProgram(QDBusConnection sessionBus, QObject *parent)
    : SessionProgram(parent)
    , m_bus(std::move(sessionBus))
    , m_watcher(names::application, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
    , m_firstOwner(askForOwner(m_bus))
{
    qDBusRegisterMetaType<QMap<QString, QString>>();
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                m_owner = newOwner;
                if (newOwner.isEmpty()) {
                    Q_EMIT left();
                }
            });
}

QString BusProgram::owner() const
{
    if (m_owner) {
        return *m_owner;
    }
    // Read from the reply itself: the event loop may dispatch a call before a reply that arrived earlier.
    return m_firstOwner.isFinished() && !m_firstOwner.isError()
               ? m_firstOwner.reply().arguments().value(0).toString()
               : QString();
}

bool BusProgram::isThere(const SessionDisplay &display) const
{
    return display.isThere(qEnvironmentVariable("XDG_RUNTIME_DIR"));
}

void BusProgram::start(const SessionDisplay &display)
{
    // The bus may have been started before the display, or have been given another one since.
    auto variables = busCall(u"UpdateActivationEnvironment"_s);
    variables << QVariant::fromValue(display.environment());
    m_bus.send(variables);
    auto call = busCall(u"StartServiceByName"_s);
    call << QString(names::application) << 0U;
    auto *asked = new QDBusPendingCallWatcher(m_bus.asyncCall(call, busTimeout), this);
    connect(asked, &QDBusPendingCallWatcher::finished, this, [this, asked] {
        asked->deleteLater();
        if (asked->isError()) {
            Q_EMIT startFailed(asked->error().name() + u": "_s + asked->error().message());
        }
    });
}

} // namespace corvane
