// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "tests/adapters/StatusNotifierHost.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>

namespace corvane {

/// A status item and its host on a bus of their own. A test class derives from it.
class StatusNotifierRoom {
protected:
    /// Starts the bus and the host.
    void begin()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_host = std::make_unique<StatusNotifierHost>(
            QDBusConnection::connectToBus(m_bus->address(), QStringLiteral("host")));
        m_host->start();
    }

    void end()
    {
        m_item.reset();
        m_host.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("item"));
        QDBusConnection::disconnectFromBus(QStringLiteral("host"));
        m_bus.reset();
    }

    /// The item's connection.
    [[nodiscard]] QDBusConnection connection() const
    {
        const QDBusConnection known(QStringLiteral("item"));
        return known.isConnected() || m_item
                   ? known
                   : QDBusConnection::connectToBus(m_bus->address(), QStringLiteral("item"));
    }

    /// The item's name on the bus.
    [[nodiscard]] QString name() const { return connection().baseService(); }

    /// Creates the item and waits until the host has it.
    void create(StatusNotifierItem::Desktop desktop)
    {
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(), desktop);
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
    }

    /// The same with a label that may appear at once, and until the host has read it.
    void make(StatusNotifierItem::Desktop desktop)
    {
        desktop.labelPause = {};
        create(desktop);
        QTRY_VERIFY(m_host->labelReads > 0);
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StatusNotifierHost> m_host;
    std::unique_ptr<StatusNotifierItem> m_item;
};

} // namespace corvane
