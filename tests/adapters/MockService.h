// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PrivateBus.h"

#include <signal.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace corvane {

/// A mock service of python3-dbusmock on a private bus, in a separate process that the destructor ends.
class MockService {
public:
    /// `kind` is the option that chooses the bus, --system or --session; `arguments` follow it.
    MockService(const PrivateBus &bus, const QString &kind, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), bus.address());
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("/usr/bin/python3"),
                        QStringList{QStringLiteral("-m"), QStringLiteral("dbusmock"), kind} + arguments);
    }
    ~MockService()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    MockService(const MockService &) = delete;
    MockService &operator=(const MockService &) = delete;

    /// Stops the process until resume(), so that the service hangs.
    void suspend()
    {
        m_isSuspended = true;
        ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
    }
    void resume()
    {
        m_isSuspended = false;
        ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
    }
    [[nodiscard]] bool isSuspended() const { return m_isSuspended; }

private:
    QProcess m_process;
    bool m_isSuspended = false;
};

} // namespace corvane
