// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace corvane {

/// Ensures that a user runs Quillet only once, and lets a second start, a launcher or a script call the
/// running program as org.freedesktop.Application on the session bus. Main thread only.
///
/// As long as this object lives, it holds lock files and the bus name. The lock files also work between
/// programs of which one has no session bus or a different one. If the bus goes away, the program can no
/// longer be called; the locks stay, and the program goes on.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    enum class Start {
        first,      ///< this is the only one: go on
        handedOver, ///< another one runs and has been activated: end
        leftAlone,  ///< another one runs and has not been asked for anything: end
        otherSilent ///< another one runs and did not answer, or cannot be reached: say so and end
    };

    /// What this start wants from another instance.
    enum class Wish {
        activation, ///< the user started the program and wants to see it
        nothing     ///< the desktop started it
    };

    /// claim() locks a file in each of `lockDirectories` that can be written; see userLockDirectories().
    SingleInstance(QDBusConnection sessionBus, QStringList lockDirectories, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// The user's state and runtime folders. Both, because either may be missing from the environment of one
    /// of two starts.
    [[nodiscard]] static QStringList userLockDirectories();

    /// Becomes the first instance, or hands over to it if `wish` says so. Called once, at the start, before
    /// anything that a teacher could notice. Returns within 11 seconds, whatever hangs. `activationToken` is
    /// the launcher's token for raising a window, or empty; see takeActivationToken().
    QCoro::Task<Start> claim(QString activationToken, Wish wish = Wish::activation);

    /// Releases name and locks before this process executes the program again, which would otherwise find
    /// another instance. Blocks for at most a second. Nothing else of the program may act after this.
    void giveUp();

    /// Takes the token out of the environment, so that no program started later uses it.
    [[nodiscard]] static QString takeActivationToken();

Q_SIGNALS:
    /// A second start or the desktop asks the program to show itself. `token` may be empty.
    void activationRequested(const QString &token);
    /// The program is asked to end.
    void quitRequested();
    /// The session bus went away.
    void busLost();

private:
    [[nodiscard]] bool lock();
    void unlock();

    QDBusConnection m_bus;
    QStringList m_lockDirectories;
    QList<int> m_locks;

private Q_SLOTS:
    void disconnected();
};

} // namespace corvane
