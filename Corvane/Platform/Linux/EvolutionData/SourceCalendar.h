// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Calendar/CalendarMonitor.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarLog.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarMemory.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarQuestion.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"
#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Platform/Linux/Waiting/WorkerPool.h"

#include <qcoro/qcorotask.h>

#include <QDeadlineTimer>
#include <QSet>

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace corvane {

/// Why a calendar gave no answer.
struct CalendarError {
    CalendarStatus::Condition condition = CalendarStatus::Condition::silent;
    QString step;
    QString reason;
};

/// What a calendar contains for one question.
struct CalendarReading {
    std::vector<CalendarEvent> events;
    std::vector<SkippedEvent> skippedEvents;
    /// Names of unknown time zones, for which the user's own is used.
    std::set<QByteArray> unknownZones = {};
    /// Events that other calendars contain, too: not in `events`, but in `sharedText` as calendar text.
    std::set<IdentifierKey> shared = {};
    QByteArray sharedText = {};
    /// Changes when the calendar does. Empty if the calendar does not report changes.
    QByteArray version = {};
    /// Why the service cannot ask the server, if it answered from its cache.
    std::optional<CalendarError> outdated = {};
    /// When the calendar gave these events, if that may have been before this reading.
    std::optional<Date> askedAt = {};
};

/// The span that is remembered with an answer: the day that `question` asks for and the seven after it, one
/// of which may have 25 hours.
[[nodiscard]] DateInterval rememberedSpan(const CalendarQuestion &question);

/// Adds the series that an expansion did not finish to the skipped events of `reading`.
void noteUnfinished(const Expansion &expansion, CalendarReading &reading);

/// What `calendar` contains for `question`, with the events in `shared` as text; none if it does not cover
/// the question. For a worker thread.
[[nodiscard]] std::optional<CalendarReading> rememberedReading(const RememberedCalendar &calendar,
                                                               const CalendarQuestion &question,
                                                               const std::set<IdentifierKey> &shared = {});

/// Shared by all calendars; outlives them.
struct CalendarServices {
    CalendarServices(DebugLogService &log, const QString &memoryFolder) : log(log), memory(memoryFolder) {}

    CalendarLog log;
    CalendarMemory memory;
    /// Called on the main thread when a calendar has something that the last load lacked.
    std::function<void()> announceNews = [] {};
    /// For expansions.
    WorkerPool workers{4};
    /// For reading folders and files, so that a disk that hangs stops nothing else.
    WorkerPool files{4};
    /// For the memory; one thread keeps its operations in order.
    WorkerPool memories{1};
};

/// One calendar, of the service or a file: queries it, remembers its last good answer, and keeps its status.
///
/// One reading runs at a time. A reading that misses the deadline of its query goes on, and its result
/// answers the next query; until then the last good answer is used, from this run or from disk. Readings are
/// remembered in the background, and only when they have changed.
///
/// Main thread only. Coroutines share the calendar, so that it outlives what they wait for.
class SourceCalendar : public std::enable_shared_from_this<SourceCalendar> {
public:
    SourceCalendar(std::shared_ptr<CalendarServices> services, QString identifier);
    virtual ~SourceCalendar() = default;
    SourceCalendar(const SourceCalendar &) = delete;
    SourceCalendar &operator=(const SourceCalendar &) = delete;

    [[nodiscard]] const CalendarStatus &status() const { return m_status; }

    /// Adds the answer to `question` to `answers`. Ends soon after `inTime`, and no later than `deadline`.
    static QCoro::Task<void> query(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                                   QDeadlineTimer inTime, QDeadlineTimer deadline, CalendarAnswers &answers);

    /// Whether the calendar is remembered on disk. Ends at `deadline`.
    static QCoro::Task<bool> hasMemory(std::shared_ptr<SourceCalendar> self, QDeadlineTimer deadline);

    /// Sets which events other calendars contain, too. This calendar leaves them to SharedEvents, because
    /// their revisions and changed instances may be in several calendars.
    void setShared(std::set<IdentifierKey> shared) { m_shared = std::move(shared); }
    /// The shared events as calendar text, from the last answer to `question`.
    [[nodiscard]] QByteArray sharedText(const CalendarQuestion &question) const;

    /// Called when the calendar was removed or disabled.
    void forget();

    /// Nothing is announced or logged any more.
    virtual void close() { m_isClosed = true; }

protected:
    using Reading = std::expected<CalendarReading, CalendarError>;

    /// Reads the calendar, without a time limit. The caller keeps the calendar alive.
    virtual QCoro::Task<Reading> read(CalendarQuestion question) = 0;

    /// Calendar text of the events behind the last reading, for all of `span`; none if it is unavailable now.
    /// The caller keeps the calendar alive.
    virtual QCoro::Task<std::optional<QByteArray>> capture(CalendarQuestion span) = 0;

    [[nodiscard]] CalendarServices &services() const { return *m_services; }
    [[nodiscard]] bool isClosed() const { return m_isClosed; }
    [[nodiscard]] const std::set<IdentifierKey> &shared() const { return m_shared; }
    /// What is remembered of the calendar, once that has been read; may be null.
    [[nodiscard]] const std::shared_ptr<const RememberedCalendar> &memory() const { return m_memory; }
    void rename(const QString &name, const QString &account);
    void log(const QString &message) const;

private:
    struct Attempt {
        CalendarQuestion question;
        Pending<std::shared_ptr<Reading>> reading;
        bool isLate = false;
    };
    struct Answer {
        CalendarQuestion question;
        CalendarReading reading;
    };

    static QCoro::Task<void> attempt(std::shared_ptr<SourceCalendar> self, std::shared_ptr<Attempt> attempt);
    static QCoro::Task<std::optional<Reading>> readInTime(std::shared_ptr<SourceCalendar> self,
                                                          CalendarQuestion question, QDeadlineTimer inTime);
    static QCoro::Task<bool> hasLastAnswer(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                                           QDeadlineTimer deadline);
    static QCoro::Task<void> remember(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                                      QByteArray version);
    static QCoro::Task<void> writeMemory(std::shared_ptr<SourceCalendar> self);
    static QCoro::Task<bool> recall(std::shared_ptr<SourceCalendar> self, QDeadlineTimer deadline);

    void takeAnswer(const CalendarQuestion &question, CalendarReading reading, CalendarAnswers &answers);
    void takeSuccess(Date lastRead);
    void takeFailure(const CalendarError &error, bool hasLastAnswer);
    void logZones(const std::set<QByteArray> &unknownZones);
    void logSkippedEvents(const std::vector<SkippedEvent> &skippedEvents);

    std::shared_ptr<CalendarServices> m_services;
    CalendarStatus m_status;
    std::shared_ptr<Attempt> m_attempt;
    /// A finished reading that was too late for its query.
    std::shared_ptr<Attempt> m_lateAttempt;
    std::optional<Answer> m_answer;
    std::set<IdentifierKey> m_shared;

    std::optional<Pending<std::shared_ptr<std::optional<RememberedCalendar>>>> m_recalling;
    std::shared_ptr<const RememberedCalendar> m_memory;
    QByteArray m_memoryVersion;
    bool m_isRemembering = false;
    bool m_isUnwritten = false;
    QString m_loggedMemoryError;
    bool m_isClosed = false;
    QSet<QByteArray> m_loggedSkips;
    std::set<QByteArray> m_loggedZones;
};

} // namespace corvane
