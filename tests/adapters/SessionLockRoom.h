// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/SessionLockWatcher.h"
#include "tests/adapters/MockService.h"
#include "tests/support/ManualClock.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QList>
#include <QSignalSpy>
#include <QString>
#include <QVariantList>

#include <memory>

namespace corvane {

/// The watcher of the session's lock, with mock services of python3-dbusmock on private buses. A test class
/// derives from it.
class SessionLockRoom {
protected:
    void begin();
    void end();

    /// The session manager, with the session "c1".
    void startManager();
    void addSession(const QString &id);
    void callManager(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments);
    void emitFromSession(const QString &signal);
    void setHint(bool locked);

    /// The screen saver.
    void startSaver();
    void setSaver(bool active);

    /// Creates the watcher.
    void make();
    /// Creates the watcher and waits until its initial calls are answered.
    void watch();
    /// Calls through the watcher's own connections, where answers arrive after everything sent before. Three
    /// rounds, since some of the watcher's calls depend on the answers to others.
    void settle();
    /// What the watcher has reported, oldest first.
    [[nodiscard]] QList<bool> changes() const;

    /// The tests' own connection to a bus.
    [[nodiscard]] static QDBusConnection control(const PrivateBus &bus, const QString &name);

    std::unique_ptr<PrivateBus> m_systemBus;
    std::unique_ptr<PrivateBus> m_sessionBus;
    std::unique_ptr<MockService> m_manager;
    std::unique_ptr<MockService> m_saver;
    std::unique_ptr<SessionLockWatcher> m_watcher;
    std::unique_ptr<QSignalSpy> m_changes;
    /// Measures only the timeout of a lock request; the buses use real time.
    ManualClock m_clock{dateSince1970(0)};

private:
    void awaitName(const QDBusConnection &bus, const QString &name);
};

} // namespace corvane
