// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace corvane {

/// A calendar server on the loopback interface with one calendar, "Online", owned by the user "teacher". The
/// destructor ends the server by its process id.
class CalDavServer {
public:
    /// Starts the server and waits up to 20 s until it listens. Ends the test program if it does not.
    CalDavServer();
    ~CalDavServer();
    CalDavServer(const CalDavServer &) = delete;
    CalDavServer &operator=(const CalDavServer &) = delete;

    /// Adds or replaces the event `name` on the server; `component` is its iCalendar text.
    void put(const QString &name, const QByteArray &component) const;
    void remove(const QString &name) const;

    /// Stops the server; connections are refused.
    void stop();
    void start();
    /// From now until resume() the server accepts connections but never answers.
    void hang() const;
    void resume() const;
    /// From the next start() on, the server asks for a password that no client has.
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
