// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace corvane {

/// Sees to it that a user runs Quillet once, and lets a second start, a launcher or a script speak to the one
/// that runs, as org.freedesktop.Application on the session bus. Main thread only.
///
/// Two things are held as long as this lives: lock files, which also tell two programs apart of which one has
/// no session bus or another one, and the bus name. The bus going away changes nothing but that nobody can
/// speak to the program any more: the locks stay, and it keeps on teaching.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    enum class Start {
        first,      ///< this is the only one: go on
        handedOver, ///< another one runs and has been activated: end
        otherSilent ///< another one runs and did not answer, or cannot be reached: say so and end
    };

    /// A lock file is held in each of `lockDirectories` that can be written to; see userLockDirectories().
    SingleInstance(QDBusConnection sessionBus, QStringList lockDirectories, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// The user's state and runtime folders. Both, since either may be missing from the environment of one of
    /// two starts.
    [[nodiscard]] static QStringList userLockDirectories();

    /// Becomes the first or speaks to it; called once, at the start, before anything that a teacher could
    /// notice. Answers within 10 seconds whatever hangs. `activationToken` is what the launcher gave this
    /// start to raise a window with, or empty; see takeActivationToken().
    QCoro::Task<Start> claim(QString activationToken);

    /// Gives name and locks back before this process starts the program anew, which must not take itself for
    /// another one. Blocks for a second at most. Nothing of the program may act any more.
    void giveUp();

    /// The token from the environment, which is then cleared of it, so that no program started later uses it.
    [[nodiscard]] static QString takeActivationToken();

Q_SIGNALS:
    /// A second start, or the desktop, asks the program to show itself. `token` may be empty.
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
