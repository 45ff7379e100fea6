// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SleepWatcher.h"

#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace corvane {

SleepWatcher::SleepWatcher(QDBusConnection systemBus, QObject *parent) : QObject(parent)
{
    // Without a service name: to subscribe by name, Qt would first ask for the name's owner and block.
    systemBus.connect({}, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
                      u"PrepareForSleep"_s, this, SLOT(prepareForSleep(QDBusMessage)));
}

void SleepWatcher::prepareForSleep(const QDBusMessage &message)
{
    const QVariant begins = message.arguments().value(0);
    if (begins.typeId() == QMetaType::Bool && !begins.toBool()) {
        Q_EMIT woke();
    }
}

} // namespace corvane
