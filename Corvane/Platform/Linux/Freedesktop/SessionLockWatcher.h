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

/// Tells whether the user's session is locked. Main thread only. Follows signals of the buses and does not
/// poll.
///
/// The sources are the session manager on the system bus (its Lock and Unlock requests and its LockedHint)
/// and the screen savers on the session bus. The session is locked while any of them says so. A source that
/// leaves its bus no longer counts, so that a crashed screen locker does not leave the session locked for
/// ever.
///
/// A Lock request is only a request: it counts for a few seconds, because if nothing locks the screen,
/// nothing unlocks it either, and the banners would stay hidden. Some lockers react to a Lock request and
/// signal only on the session bus that they have ended: a screen saver's signal that it is inactive therefore
/// also ends a Lock request, but not a LockedHint.
class SessionLockWatcher final : public QObject {
    Q_OBJECT

public:
    /// A bus without a connection has no sources.
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
    /// Handles `message`, whose first argument says whether the screen saver `owner` is active.
    void handleSaverState(const QString &owner, const QDBusMessage &message);
    void removeSaver(const QString &owner);
    void update();
    static QCoro::Task<void> endRequest(QPointer<SessionLockWatcher> watcher, int request);
    void then(const QDBusPendingCall &call, std::function<void(const QDBusMessage &)> onAnswer);

    QDBusConnection m_systemBus;
    QDBusConnection m_sessionBus;
    /// Whether each screen saver said last that it is active, by unique name.
    QHash<QString, bool> m_savers;
    QDBusServiceWatcher *m_saverOwners = nullptr;
    /// The path of the session's object; empty until it is known.
    QString m_sessionPath;
    /// Counts the session manager's restarts, so that answers of an earlier one are ignored.
    int m_managerLife = 0;
    bool m_lockRequested = false;
    int m_requests = 0; ///< number of the latest Lock request
    bool m_lockedHint = false;
    /// Whether a signal has reported the hint; an answer that arrives later is out of date.
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
