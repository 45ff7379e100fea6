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

/// The services that tell of the machine, as mocks on a system bus and a session bus of the test's own; at
/// first none is there. The watcher under test gets connections of its own to them.
class SystemServices {
public:
    SystemServices();
    ~SystemServices();
    SystemServices(const SystemServices &) = delete;
    SystemServices &operator=(const SystemServices &) = delete;

    /// What the watcher is made with.
    [[nodiscard]] QDBusConnection systemBus() const;
    [[nodiscard]] QDBusConnection sessionBus() const;

    void startSessionManager();
    /// What it says before a sleep, and after.
    void prepareForSleep(bool begins);

    void startNetworkManager(uint state);
    void setNetworkManager(uint state, uint connectivity);

    /// The desktop's portal, and what it says of the network.
    void startPortal(bool isAvailable);
    void setPortal(bool isAvailable);

    /// How often the portal was asked for the network.
    [[nodiscard]] qsizetype questionsToPortal() const;

    /// Returns when the watcher has been told what was said so far, and has the answers to what it asked of
    /// services that do not hang.
    void settle() const;

    /// The processes and the buses' daemons, to hang or to end.
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
