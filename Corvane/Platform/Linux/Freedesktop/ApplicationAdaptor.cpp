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

// The program opens no documents: to be handed some is to be asked for.
void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &platformData)
{
    Activate(platformData);
}

// An action that is not known is ignored, as the interface has it: a desktop may keep an older entry's list.
void ApplicationAdaptor::ActivateAction(const QString &name, const QVariantList &, const QVariantMap &)
{
    if (name == "quit"_L1) {
        m_handlers.quit();
    }
}

} // namespace corvane
