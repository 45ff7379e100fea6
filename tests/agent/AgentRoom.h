// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/PendingRequest.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace corvane {

/// A private bus and private folders for the real agent, and a client of its bus interface. Its destructor
/// kills the agent, by process id.
class AgentRoom {
public:
    enum class Start {
        byHand, ///< the test calls startAgent()
        byBus   ///< the bus starts it at the first call
    };
    explicit AgentRoom(Start start = Start::byHand);
    ~AgentRoom();
    AgentRoom(const AgentRoom &) = delete;
    AgentRoom &operator=(const AgentRoom &) = delete;

    [[nodiscard]] PrivateBus &bus() { return *m_bus; }
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

    /// Starts the agent and waits until it owns its name on the bus. `shell`: a command that bash runs first,
    /// e.g. to set a limit.
    void startAgent(const QString &shell = {});
    /// Starts the agent without waiting for its name.
    void launchAgent(const QStringList &arguments = {}, const QString &shell = {});
    [[nodiscard]] QProcess &agent() { return *m_agent; }
    /// The agent's executable.
    [[nodiscard]] static QString program();
    /// Sends SIGKILL and waits for the end.
    void killAgent();

    [[nodiscard]] bool isNameOwned(const QString &name = {}) const;
    /// The process that owns the agent's name; 0 if none does.
    [[nodiscard]] qint64 ownerProcess() const;

    /// Calls of the agent's interface; each blocks until the answer.
    QDBusMessage add(const PendingRequest &request) const;
    QDBusMessage remove(const QStringList &identifiers) const;
    [[nodiscard]] QStringList pending() const;
    QDBusMessage call(const QString &method, const QVariantList &arguments) const;
    [[nodiscard]] QDBusMessage message(const QString &method, const QVariantList &arguments) const;

    [[nodiscard]] QString queuePath() const
    {
        return m_folder.filePath(QStringLiteral("state/quillet/pending-notifications"));
    }
    [[nodiscard]] QString entryPath() const;
    /// Makes the bus start `command`, a shell command line, when this name is called.
    void addService(const QString &name, const QString &command);
    /// A path in the room's folder, for a test's own files.
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString log() const;

    /// What a process has in memory, and what of it no other process shares.
    struct Memory {
        double residentMiB = 0;
        double privateMiB = 0;
    };
    [[nodiscard]] static Memory memoryOf(qint64 process);

    /// The current second since 1970.
    [[nodiscard]] static qint64 now();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PrivateBus> m_bus;
    QString m_connectionName;
    QDBusConnection m_connection;
    std::unique_ptr<QProcess> m_agent;
};

} // namespace corvane
