// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace corvane {

/// A private message bus: a dbus-daemon with its own configuration and none of the machine's services. The
/// destructor ends it by its process id.
class PrivateBus {
public:
    enum class Kind { session, system };

    /// Starts the daemon and waits until it listens; ends the test program if it does not. The daemon may
    /// start the services whose files are in `serviceDirectories`.
    explicit PrivateBus(const QStringList &serviceDirectories = {}, Kind kind = Kind::session);
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    /// The bus address, for QDBusConnection::connectToBus() and DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] QString address() const { return m_address; }

    /// The daemon's process id; 0 after its end.
    [[nodiscard]] qint64 processId() const { return m_daemon.processId(); }

    /// Ends the daemon, as when the session breaks off, and with it all connections.
    void stop();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

} // namespace corvane
