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

/// Keeps the pending requests, on disk and in memory, and sees to it that each is delivered in its time: from
/// its fire date on, before its expiration date, in the order of the fire dates, and once. Main thread only.
///
/// Never twice goes before everything else. A request is taken out of the file, on disk, once a server has
/// answered and before the request is handed to it; so an agent that dies in between loses it.
///  - Where no server answers, nothing has been taken out, and it is tried again.
///  - Where the server refuses it, or has left the bus without an answer (and with it what it showed), the
///    request goes back into the file and is tried again.
///  - Where the server has the request and says nothing, it may show it still. The request then lives in
///    memory only, and goes back into the file when that server leaves the bus.
///  - Where it cannot be taken out, because nothing can be written, it is not delivered.
/// What reaches its expiration date on any of these ways is dropped with a line in the log. So are, of the
/// steps of one lesson that are due together, all but the newest; see LessonSteps.h.
class RequestKeeper final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(std::expected<void, QString>)>;

    /// Everything that is passed is borrowed. `log` takes a line.
    RequestKeeper(RequestFile &file, LoginEntry &loginEntry, WallClock &clock, NotificationServer &server,
                  std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// Reads the file; called once, first. False when the disk does not give it now: then nothing else may be
    /// called, and a later start may find it.
    [[nodiscard]] bool load();

    /// From now on what is due is delivered.
    void start();

    /// From now on nothing more is delivered; what is asked for is still written.
    void stopDelivering();

    /// The identifiers of all that is pending, in the order of their moments.
    [[nodiscard]] QStringList pendingRequests() const { return m_queue.identifiers(); }

    /// What an add() of this request would be up against; see RequestQueue.
    [[nodiscard]] const RequestQueue &queue() const { return m_queue; }

    /// Changes the queue. `answer` is called later, when the change is on disk; several changes that come at
    /// the same time share one write. When it cannot be written, none of them has happened.
    void add(const PendingRequest &request, Answer answer);
    void remove(const QStringList &identifiers, Answer answer);

    /// Writes and answers at once what still waits for its write.
    void writeNow() { flush(); }

    /// Whether nothing is pending and nothing under way: the agent may end.
    [[nodiscard]] bool isIdle() const;

    /// Takes the login entry away, and what was invalidated in the file, when nothing is pending; called when
    /// the agent ends.
    void tidyUp();

Q_SIGNALS:
    /// Something has been done; isIdle() may have changed.
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
    /// What the file holds, while changes wait for their write.
    RequestQueue m_written;
    std::vector<Answer> m_answers;
    QStringList m_removed; ///< since the last write
    bool m_hasAdded = false;
    QTimer m_flush;

    enum class Step { stopped, waiting, asking, delivering };
    Step m_step = Step::stopped;
    /// The request that has been handed to the server; it is not in the queue.
    PendingRequest m_underWay;
    bool m_isWithdrawn = false; ///< taken back since
    // Taken back by changes that wait for their write.
    bool m_withdrawsUnderWay = false;
    QSet<QString> m_withdrawnHeld;
    /// Handed to the server that has not answered; see above.
    std::deque<PendingRequest> m_held;

    /// Until the next try these are passed over, or all.
    QSet<QString> m_postponed;
    bool m_isServerAbsent = false;
    bool m_isAbsenceLogged = false; ///< once is enough until one is there
    QTimer m_retry;
    int m_failures = 0;
    QString m_toldError; ///< why the queue could not be written the last time
    bool m_isEntryPresent = false;
    bool m_isEntryFailureLogged = false;
    bool m_hasInvalidated = false;
    std::optional<qint64> m_stepsSeenAt; ///< in seconds since 1970: no step has been added since
};

} // namespace corvane
