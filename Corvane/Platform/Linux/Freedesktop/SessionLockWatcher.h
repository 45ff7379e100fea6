// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotask.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class QDBusPendingCall;
class QDBusServiceWatcher;

namespace corvane {

/// Tells whether the user's session is locked. Main thread only; it is told by the buses and asks nothing
/// again.
///
/// Sources are the session manager on the system bus (its Lock and Unlock requests and its LockedHint) and
/// the screen savers on the session bus. The session is locked as long as one of them says so. A source that
/// leaves its bus no longer counts, so that a screen locker that crashed does not leave the session locked
/// for ever. Some lockers answer a Lock request and tell only the session bus when they are done: a screen
/// saver's word that it ended therefore also ends a Lock request, though not a LockedHint. A request is no
/// more than that: one that no source follows within a few seconds counts no longer, since where nothing
/// locks the screen nothing ever unlocks it, and the banners would stay away for good.
class SessionLockWatcher final : public QObject {
    Q_OBJECT

public:
    /// A bus that is not there is a bus without sources.
    SessionLockWatcher(QDBusConnection systemBus, QDBusConnection sessionBus, QObject *parent = nullptr);

    [[nodiscard]] bool locked() const { return m_locked; }

    /// How long a Lock request counts by itself.
    static constexpr Seconds requestTimeout{10};

Q_SIGNALS:
    void lockedChanged(bool locked);

private:
    void watchScreenSavers();
    void queryScreenSaver(const QString &name);
    void watchSessionManager();
    void querySession();
    void querySessionPath(const QString &method, const QVariant &argument, bool isLastResort);
    void setSessionPath(const QString &path);
    void dropSession();
    /// `message` of the screen saver `owner` tells first whether it is active.
    void handleSaverState(const QString &owner, const QDBusMessage &message);
    void removeSaver(const QString &owner);
    void update();
    static QCoro::Task<void> endRequest(QPointer<SessionLockWatcher> watcher, int request);
    void then(const QDBusPendingCall &call, std::function<void(const QDBusMessage &)> onAnswer);

    QDBusConnection m_systemBus;
    QDBusConnection m_sessionBus;
    /// Who on the session bus said last that it is active (true) or not, by unique name.
    QHash<QString, bool> m_savers;
    QDBusServiceWatcher *m_saverOwners = nullptr;
    /// The session's object, empty while it is not known.
    QString m_sessionPath;
    /// Counts the lives of the session manager: an answer of an earlier one is of no use.
    int m_managerLife = 0;
    bool m_lockRequested = false;
    int m_requests = 0; ///< tells a request from those before it
    bool m_lockedHint = false;
    /// A signal told the hint, so that an answer given before it is out of date.
    bool m_hintWasSignalled = false;
    bool m_locked = false;

private Q_SLOTS:
    void saverChanged(const QDBusMessage &message);
    void sessionLockRequested();
    void sessionUnlockRequested();
    void sessionPropertiesChanged(const QDBusMessage &message);
    void busWasLost(const QDBusMessage &message);
};

} // namespace corvane
