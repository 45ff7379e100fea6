// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace corvane {

/// A message bus of the test's own: a dbus-daemon with its own configuration and no service of the machine's.
/// It is ended, by its process id, with the object.
class PrivateBus {
public:
    enum class Kind { session, system };

    /// Starts the daemon and waits until it listens. `serviceDirectories` hold the files of the services that
    /// it may start. Ends the test program when it does not come up.
    explicit PrivateBus(const QStringList &serviceDirectories = {}, Kind kind = Kind::session);
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    /// Where it listens; for QDBusConnection::connectToBus() and DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] QString address() const { return m_address; }

    /// The daemon's process id, 0 when it was ended.
    [[nodiscard]] qint64 processId() const { return m_daemon.processId(); }

    /// Ends the daemon, as when the session breaks off. Connections to it are then dead.
    void stop();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

} // namespace corvane
