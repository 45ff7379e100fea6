// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace corvane {

/// A calendar server on the loopback interface with one calendar, "Online", of the user "teacher". It is
/// ended, by its process id, with the object.
class CalDavServer {
public:
    /// Starts the server and waits until it listens. Ends the test program when it does not come up.
    CalDavServer();
    ~CalDavServer();
    CalDavServer(const CalDavServer &) = delete;
    CalDavServer &operator=(const CalDavServer &) = delete;

    /// Adds or replaces an event on the server: the text of a component.
    void put(const QString &name, const QByteArray &component) const;
    void remove(const QString &name) const;

    /// The server is down; connections are refused.
    void stop();
    void start();
    /// It accepts connections and never answers.
    void hang() const;
    void resume() const;
    /// From its next start on it asks for a password that no client has.
    void refuseEveryone() { m_isRefusing = true; }

    /// Adds the calendar to the calendar service as the source `id`.
    void addToService(const QString &id) const;

private:
    [[nodiscard]] QString collection() const
    {
        return m_folder.filePath(QStringLiteral("data/collection-root/teacher/lessons/"));
    }

    QTemporaryDir m_folder;
    QProcess m_server;
    int m_port = 0;
    bool m_isRefusing = false;
};

} // namespace corvane
