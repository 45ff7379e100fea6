// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestKeeper.h"

#include "NotificationAgent/AgentLog.h"
#include "NotificationAgent/LessonSteps.h"
#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/RequestFile.h"
#include "NotificationAgent/WallClock.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// At most this many changes share one write.
constexpr std::size_t maximumWaitingAnswers = 1000;

// The retry interval doubles from the first to the maximum.
constexpr std::chrono::milliseconds firstRetry = 1s;
constexpr std::chrono::milliseconds maximumRetryInterval = 4s;

} // namespace

RequestKeeper::RequestKeeper(RequestFile &file, LoginEntry &loginEntry, WallClock &clock,
                             NotificationServer &server, std::function<void(const QString &)> log,
                             QObject *parent)
    : QObject(parent)
    , m_file(file)
    , m_loginEntry(loginEntry)
    , m_clock(clock)
    , m_server(server)
    , m_log(std::move(log))
{
    m_flush.setSingleShot(true);
    connect(&m_flush, &QTimer::timeout, this, [this] {
        flush();
        pump();
    });
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &RequestKeeper::retryNow);
    connect(&m_clock, &WallClock::woke, this, &RequestKeeper::pump);
    connect(&m_server, &NotificationServer::answered, this, &RequestKeeper::handleServerAnswer);
    connect(&m_server, &NotificationServer::finished, this, &RequestKeeper::handleOutcome);
    connect(&m_server, &NotificationServer::arrived, this, &RequestKeeper::retryNow);
    connect(&m_server, &NotificationServer::replaced, this, [this] {
        for (const PendingRequest &request : std::exchange(m_held, {})) {
            drop(request, "\"the server that has it was replaced\"");
        }
    });
    connect(&m_server, &NotificationServer::left, this, [this] {
        // A request that is being withdrawn must not be put back.
        flush();
        for (const PendingRequest &request : std::exchange(m_held, {})) {
            putBack(request);
        }
        retryNow();
    });
}

bool RequestKeeper::load()
{
    const RequestFile::Content content = m_file.read();
    for (const QString &remark : content.remarks) {
        m_log(u"queue file "_s + remark);
    }
    m_queue = content.queue;
    if (!m_queue.isEmpty()) {
        m_log(u"queue read requests="_s + QString::number(m_queue.size()));
    }
    return content.isReadable;
}

void RequestKeeper::start()
{
    if (m_step == Step::stopped) {
        m_step = Step::waiting;
        if (!m_queue.isEmpty()) {
            makeLoginEntry();
        }
        pump();
    }
}

void RequestKeeper::add(const PendingRequest &request, Answer answer)
{
    if (m_answers.empty()) {
        m_written = m_queue;
    }
    m_queue.add(request);
    m_stepsSeenAt.reset();
    m_hasAdded = true;
    changed(std::move(answer));
}

void RequestKeeper::remove(const QStringList &identifiers, Answer answer)
{
    if (m_answers.empty()) {
        m_written = m_queue;
    }
    for (const QString &identifier : identifiers) {
        if (m_queue.take(identifier)) {
            m_removed.append(identifier);
        }
    }
    // A request with the server cannot be withdrawn, but it will not be retried.
    const QSet<QString> all(identifiers.begin(), identifiers.end());
    m_withdrawsUnderWay = m_withdrawsUnderWay || all.contains(m_underWay.identifier);
    for (const PendingRequest &held : m_held) {
        if (all.contains(held.identifier)) {
            m_withdrawnHeld.insert(held.identifier);
        }
    }
    changed(std::move(answer));
}

void RequestKeeper::changed(Answer answer)
{
    m_answers.push_back(std::move(answer));
    if (m_answers.size() >= maximumWaitingAnswers) {
        flush();
        pump();
    } else if (!m_flush.isActive()) {
        m_flush.start(0); // after calls that have already arrived
    }
}

void RequestKeeper::flush()
{
    m_flush.stop();
    if (m_answers.empty()) {
        return;
    }
    std::expected<void, QString> result;
    if (m_hasAdded || !m_removed.isEmpty()) {
        result = m_file.write(m_queue);
        if (!result && !m_hasAdded) { // removing needs no space
            if (m_file.invalidate(m_removed)) {
                result = {};
            }
        }
    }
    if (!result) {
        m_queue = m_written;
        // Callers retry every minute, so an error is logged once.
        if (std::exchange(m_toldError, result.error()) != result.error()) {
            m_log(u"queue file "_s + result.error());
        }
    } else {
        m_toldError.clear();
        m_isWithdrawn = m_isWithdrawn || m_withdrawsUnderWay;
        std::erase_if(
            m_held, [this](const PendingRequest &held) { return m_withdrawnHeld.contains(held.identifier); });
        if (!m_queue.isEmpty()) {
            makeLoginEntry();
        }
    }
    m_withdrawsUnderWay = false;
    m_withdrawnHeld.clear();
    m_written = {};
    m_removed.clear();
    m_hasAdded = false;
    for (const Answer &answer : std::exchange(m_answers, {})) {
        answer(result);
    }
    Q_EMIT activityOccurred();
}

void RequestKeeper::makeLoginEntry()
{
    if (m_isEntryPresent) {
        return;
    }
    const auto entered = m_loginEntry.setPresent(true);
    m_isEntryPresent = entered.has_value();
    if (!entered && !std::exchange(m_isEntryFailureLogged, true)) {
        m_log(u"login entry "_s + entered.error());
    }
}

bool RequestKeeper::invalidate(const QStringList &identifiers)
{
    // In place first: the cost does not depend on the queue's size, and it works on a full disk.
    const auto invalidated = m_file.invalidate(identifiers);
    if (invalidated) {
        m_hasInvalidated = true;
        return true;
    }
    const auto written = m_file.write(m_queue);
    m_log(u"queue file "_s + invalidated.error() + (written ? u"; rewritten"_s : u"; "_s + written.error()));
    return written.has_value();
}

void RequestKeeper::drop(const PendingRequest &request, const char *reason) const
{
    m_log(u"notification dropped identifier=%1 fire_date=%2 expiration_date=%3 reason=%4"_s
              .arg(quotedForLog(request.identifier))
              .arg(request.fireDate)
              .arg(request.expirationDate)
              .arg(QString::fromLatin1(reason)));
}

void RequestKeeper::dropUseless(qint64 now)
{
    QStringList dropped;
    for (const PendingRequest &request : m_queue.takeExpired(now)) {
        drop(request, "\"its moment is over\"");
        dropped.append(request.identifier);
    }
    // At most once a second, because there may be ten thousand requests.
    if (std::exchange(m_stepsSeenAt, now) != now) {
        for (const QString &identifier : outdatedSteps(m_queue.due(now), now)) {
            drop(*m_queue.take(identifier), "\"a later step of its lesson is due\"");
            dropped.append(identifier);
        }
    }
    if (!dropped.isEmpty()) {
        m_postponed.subtract(QSet<QString>(dropped.begin(), dropped.end()));
        (void)invalidate(dropped); // on failure they are dropped again when the file is read
    }
}

void RequestKeeper::pump()
{
    if (m_step != Step::waiting) {
        return;
    }
    // Changes first: a due request may just have been withdrawn.
    flush();
    const qint64 now = m_clock.now();
    std::erase_if(m_held, [&](const PendingRequest &held) {
        const bool isOver = held.expirationDate <= now;
        if (isOver) {
            drop(held, "\"the server never answered\"");
        }
        return isOver;
    });
    dropUseless(now);
    if (!m_isServerAbsent && m_queue.firstDue(now, m_postponed)) {
        m_step = Step::asking;
        m_server.ask();
        return;
    }
    // The same `now` as above, so that a second that has begun since is not skipped.
    m_clock.wakeAt(m_queue.nextFireDate(now));
    Q_EMIT activityOccurred();
}

void RequestKeeper::handleServerAnswer(bool isThere, const QString &reason)
{
    if (m_step != Step::asking) {
        return;
    }
    m_step = Step::waiting;
    if (!isThere) {
        if (!std::exchange(m_isAbsenceLogged, true)) {
            m_log(u"no notification server reason="_s + quotedForLog(reason));
        }
        m_isServerAbsent = true;
        postpone();
        pump();
        return;
    }
    m_isAbsenceLogged = false;
    // Both the queue and the clock may have changed meanwhile.
    flush();
    const qint64 now = m_clock.now();
    dropUseless(now);
    const std::optional<PendingRequest> due = m_queue.firstDue(now, m_postponed);
    if (!due || due->expirationDate <= now) {
        if (due) {
            m_queue.take(due->identifier);
            drop(*due, "\"its moment is over\"");
            (void)invalidate({due->identifier});
        }
        pump();
        return;
    }
    m_queue.take(due->identifier);
    if (!invalidate({due->identifier})) {
        m_queue.add(*due);
        m_postponed.insert(due->identifier);
        postpone();
        pump();
        return;
    }
    m_underWay = *due;
    m_isWithdrawn = false;
    m_step = Step::delivering;
    m_server.deliver(m_underWay);
}

void RequestKeeper::handleOutcome(NotificationServer::Outcome outcome, const QString &reason)
{
    if (m_step != Step::delivering) {
        return;
    }
    // The request may just have been withdrawn.
    flush();
    m_step = Step::waiting;
    const PendingRequest request = std::exchange(m_underWay, {});
    const QString identifier = quotedForLog(request.identifier);
    switch (outcome) {
    case NotificationServer::Outcome::shown:
        m_failures = 0;
        std::erase_if(m_held, [&](const PendingRequest &held) { return isOutdatedBy(held, request); });
        m_log(u"notification delivered identifier=%1 fire_date=%2"_s.arg(identifier).arg(request.fireDate));
        break;
    case NotificationServer::Outcome::notShown:
        m_log(u"notification not shown identifier=%1 reason=%2"_s.arg(identifier, quotedForLog(reason)));
        if (!m_isWithdrawn) {
            putBack(request);
            m_postponed.insert(request.identifier);
            postpone();
        }
        break;
    case NotificationServer::Outcome::unknown:
        m_log(
            u"notification not answered for identifier=%1 reason=%2"_s.arg(identifier, quotedForLog(reason)));
        if (!m_isWithdrawn) {
            m_held.push_back(request);
            postpone();
        }
        break;
    }
    pump();
}

void RequestKeeper::putBack(const PendingRequest &request)
{
    // Flushed first, because a failing flush resets the queue.
    flush();
    if (m_queue.contains(request.identifier)) {
        return; // replaced by a newer request
    }
    m_queue.add(request);
    m_stepsSeenAt.reset();
    if (const auto written = m_file.write(m_queue); !written) {
        // Kept in memory only: if the agent dies, it is lost, but never shown twice.
        m_log(u"queue file "_s + written.error());
    }
}

void RequestKeeper::postpone()
{
    if (!m_retry.isActive()) {
        m_retry.start(std::min(firstRetry * (1 << std::min(m_failures, 10)), maximumRetryInterval));
        ++m_failures;
    }
}

void RequestKeeper::retryNow()
{
    m_retry.stop();
    m_postponed.clear();
    m_isServerAbsent = false;
    // Ensures another pass, in case a held request expires.
    if (!m_held.empty()) {
        postpone();
    }
    pump();
}

void RequestKeeper::stopDelivering()
{
    if (m_step == Step::waiting) {
        m_step = Step::stopped;
        m_clock.wakeAt(std::nullopt);
    }
}

bool RequestKeeper::isIdle() const
{
    return m_queue.isEmpty() && m_answers.empty() && m_held.empty() &&
           (m_step == Step::waiting || m_step == Step::stopped);
}

void RequestKeeper::tidyUp()
{
    if (!m_queue.isEmpty()) {
        return;
    }
    if (m_hasInvalidated && m_file.write(m_queue)) {
        m_hasInvalidated = false;
    }
    if (const auto removed = m_loginEntry.setPresent(false); !removed) {
        m_log(u"login entry "_s + removed.error());
    }
    m_isEntryPresent = false;
}

} // namespace corvane
