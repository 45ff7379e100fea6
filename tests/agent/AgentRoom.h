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

/// A bus and folders of its own for the real agent, and the client's side of its bus interface. All that it
/// starts it ends, by process id.
class AgentRoom {
public:
    enum class Start {
        byHand, ///< startAgent() starts it
        byBus   ///< the bus does when it is called
    };
    explicit AgentRoom(Start start = Start::byHand);
    ~AgentRoom();
    AgentRoom(const AgentRoom &) = delete;
    AgentRoom &operator=(const AgentRoom &) = delete;

    [[nodiscard]] PrivateBus &bus() { return *m_bus; }
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

    /// Starts the agent and waits until it has its name on the bus. `shell` is what a shell does before.
    void startAgent(const QString &shell = {});
    /// Starts it without waiting, with arguments.
    void launchAgent(const QStringList &arguments = {}, const QString &shell = {});
    [[nodiscard]] QProcess &agent() { return *m_agent; }
    /// SIGKILL, and waits for the end.
    void killAgent();

    [[nodiscard]] bool isNameOwned(const QString &name = {}) const;
    /// The process that has the agent's name, 0 without one.
    [[nodiscard]] qint64 ownerProcess() const;

    /// The calls of the agent's interface; they wait for the answer.
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
    /// The bus starts `command`, a line for a shell, when something under this name is asked for.
    void addService(const QString &name, const QString &command);
    /// A place for a test's own files.
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString log() const;

    /// In MiB, of the process: resident, and what it shares with nobody.
    struct Memory {
        double resident = 0;
        double isPrivate = 0;
    };
    [[nodiscard]] static Memory memoryOf(qint64 process);

    /// The second that has begun.
    [[nodiscard]] static qint64 now();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PrivateBus> m_bus;
    QString m_connectionName;
    QDBusConnection m_connection;
    std::unique_ptr<QProcess> m_agent;
};

} // namespace corvane
