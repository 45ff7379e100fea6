// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/NotificationServer.h"
#include "NotificationAgent/RequestQueue.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <deque>
#include <expected>
#include <functional>
#include <optional>
#include <vector>

namespace corvane {

class LoginEntry;
class RequestFile;
class WallClock;

/// Keeps the pending requests, on disk and in memory, and delivers each once: after its fire date, before its
/// expiration date, in the order of the fire dates. Main thread only.
///
/// Never showing a request twice comes first. A request is removed from the file, on disk, after a server has
/// answered and before the request is given to it; if the agent dies in between, the request is lost.
/// - If no server answers, nothing has been removed, and delivery is retried.
/// - If the server refuses the request, or leaves the bus without an answer (and with everything it showed),
///   the request goes back into the file and is retried.
/// - If the server has the request but does not answer, it may still show it. The request then stays in
///   memory only. It goes back into the file when that server leaves the bus, and is dropped when another
///   server replaces that one.
/// - If the request cannot be removed, because nothing can be written, it is not delivered.
///
/// Requests that expire in any of these cases are dropped and logged. If several steps of one lesson are due
/// together, all but the newest are dropped and logged, too; see LessonSteps.h.
class RequestKeeper final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(std::expected<void, QString>)>;

    /// Borrows the objects passed in. `log` writes a line to the log.
    RequestKeeper(RequestFile &file, LoginEntry &loginEntry, WallClock &clock, NotificationServer &server,
                  std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// Reads the file; called once, before anything else. False if the file cannot be read at the moment:
    /// then nothing else may be called, and a later start may succeed.
    [[nodiscard]] bool load();

    /// Starts delivering due requests.
    void start();

    /// Stops delivering; changes are still written.
    void stopDelivering();

    /// The identifiers of all pending requests, in the order of their fire dates.
    [[nodiscard]] QStringList pendingRequests() const { return m_queue.identifiers(); }

    [[nodiscard]] const RequestQueue &queue() const { return m_queue; }

    /// Change the queue. `answer` is called later, when the change is on disk; simultaneous changes share one
    /// write. If it fails, none of them takes effect.
    void add(const PendingRequest &request, Answer answer);
    void remove(const QStringList &identifiers, Answer answer);

    /// Writes pending changes and answers them now.
    void writeNow() { flush(); }

    /// Whether nothing is pending or in progress, so that the agent may end.
    [[nodiscard]] bool isIdle() const;

    /// If nothing is pending, removes the login entry and the invalidated entries of the file; called when
    /// the agent ends.
    void tidyUp();

Q_SIGNALS:
    /// Something was done; isIdle() may have changed.
    void activityOccurred();

private:
    void changed(Answer answer);
    void flush();
    void pump();
    void handleServerAnswer(bool isThere, const QString &reason);
    void handleOutcome(NotificationServer::Outcome outcome, const QString &reason);
    void putBack(const PendingRequest &request);
    void postpone();
    void makeLoginEntry();
    void retryNow();
    [[nodiscard]] bool invalidate(const QStringList &identifiers);
    void dropUseless(qint64 now);
    void drop(const PendingRequest &request, const char *reason) const;

    RequestFile &m_file;
    LoginEntry &m_loginEntry;
    WallClock &m_clock;
    NotificationServer &m_server;
    std::function<void(const QString &)> m_log;

    RequestQueue m_queue;
    /// The file's contents while changes wait to be written.
    RequestQueue m_written;
    std::vector<Answer> m_answers;
    QStringList m_removed; ///< identifiers removed since the last write
    bool m_hasAdded = false;
    QTimer m_flush;

    enum class Step { stopped, waiting, asking, delivering };
    Step m_step = Step::stopped;
    /// The request that the server was given; not in the queue.
    PendingRequest m_underWay;
    bool m_isWithdrawn = false; ///< withdrawn since then
    // Withdrawn by changes that are not yet written.
    bool m_withdrawsUnderWay = false;
    QSet<QString> m_withdrawnHeld;
    /// Given to a server that has not answered; see above.
    std::deque<PendingRequest> m_held;

    /// Skipped until the next retry; if the server is absent, all requests are.
    QSet<QString> m_postponed;
    bool m_isServerAbsent = false;
    bool m_isAbsenceLogged = false; ///< logged once until a server is there
    QTimer m_retry;
    int m_failures = 0;
    QString m_toldError; ///< the last write's error, to log it once
    bool m_isEntryPresent = false;
    bool m_isEntryFailureLogged = false;
    bool m_hasInvalidated = false;
    std::optional<qint64> m_stepsSeenAt; ///< when outdated steps were last dropped, in seconds since 1970
                                         ///< UTC; reset when a request is added
};

} // namespace corvane
