// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/ApplicationAdaptor.h"

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

ApplicationAdaptor::ApplicationAdaptor(QObject *parent, Handlers handlers)
    : QDBusAbstractAdaptor(parent)
    , m_handlers(std::move(handlers))
{
}

void ApplicationAdaptor::Activate(const QVariantMap &platformData)
{
    QString token = platformData.value(u"activation-token"_s).toString();
    if (token.isEmpty()) {
        token = platformData.value(u"desktop-startup-id"_s).toString();
    }
    m_handlers.activate(token);
}

// The program opens no documents: a request to open some activates it.
void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &platformData)
{
    Activate(platformData);
}

// Unknown actions are ignored, as the interface specifies: a desktop may still use the list of an older
// entry.
void ApplicationAdaptor::ActivateAction(const QString &name, const QVariantList &, const QVariantMap &)
{
    if (name == "quit"_L1) {
        m_handlers.quit();
    }
}

} // namespace corvane
