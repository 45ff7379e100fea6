// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

#include <functional>

namespace corvane {

/// The program's org.freedesktop.Application interface on the session bus, which determines the names.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Called for the desktop's requests. Not signals, because those of an adaptor are sent on the bus.
    struct Handlers {
        std::function<void(const QString &activationToken)> activate;
        std::function<void()> quit;
    };

    ApplicationAdaptor(QObject *parent, Handlers handlers);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameter, const QVariantMap &platformData);

private:
    Handlers m_handlers;
};

} // namespace corvane
