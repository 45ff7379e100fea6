// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/adapters/MockService.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <memory>

namespace corvane {

/// Mocks of the services that report system events, on a private system bus and a private session bus; none
/// is started at first. The watcher under test has its own connections to the buses.
class SystemServices {
public:
    SystemServices();
    ~SystemServices();
    SystemServices(const SystemServices &) = delete;
    SystemServices &operator=(const SystemServices &) = delete;

    /// The connections for the watcher under test.
    [[nodiscard]] QDBusConnection systemBus() const;
    [[nodiscard]] QDBusConnection sessionBus() const;

    void startSessionManager();
    /// Sends the signal of the session manager before a sleep (`begins`) or after it.
    void prepareForSleep(bool begins);

    void startNetworkManager(uint state);
    void setNetworkManager(uint state, uint connectivity);

    /// Starts the desktop's portal, and sets whether it reports a network.
    void startPortal(bool isAvailable);
    void setPortal(bool isAvailable);

    /// How often the portal was asked about the network.
    [[nodiscard]] qsizetype questionsToPortal() const;

    /// Waits until the watcher has received everything sent so far, and the answers of all services that do
    /// not hang.
    void settle() const;

    /// The mock processes and bus daemons, which a test may suspend or end.
    std::unique_ptr<MockService> sessionManager;
    std::unique_ptr<MockService> networkManager;
    std::unique_ptr<MockService> portal;
    PrivateBus systemDaemon{QStringList{}, PrivateBus::Kind::system};
    PrivateBus sessionDaemon;

private:
    static QVariantList call(const QDBusConnection &bus, const QString &service, const QString &path,
                             const QString &method, const QVariantList &arguments);
};

} // namespace corvane
