// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto shortPatience = std::chrono::milliseconds(500);

bool covers(const DateInterval &span, const DateInterval &interval)
{
    return span.start <= interval.start && interval.end <= span.end;
}

} // namespace

std::optional<CalendarReading> rememberedReading(const RememberedCalendar &calendar,
                                                 const CalendarQuestion &question,
                                                 const std::set<IdentifierKey> &shared)
{
    if (!covers(calendar.span, question.interval)) {
        return std::nullopt;
    }
    auto contents = readCalendarText(calendar.text);
    if (!contents) {
        return std::nullopt;
    }
    ExpansionControl control;
    const ExpansionRequest request{question.interval, question.timeZoneId};
    std::vector<ComponentGroup> groups = groupsOf(std::move(*contents));
    CalendarReading reading{.events = {}, .skippedEvents = {}, .shared = shared};
    if (!shared.empty()) {
        reading.sharedText = captureGroups(takeGroups(groups, shared));
    }
    reading.events = expandGroups(groups, request, control).events;
    return reading;
}

void noteUnfinished(const Expansion &expansion, CalendarReading &reading)
{
    std::ranges::copy(expansion.unfinishedSeries, std::back_inserter(reading.skippedEvents));
}

DateInterval rememberedSpan(const CalendarQuestion &question)
{
    constexpr Seconds rememberedTime = std::chrono::hours(8 * 24 + 1);
    return {question.interval.start, question.interval.start + rememberedTime};
}

SourceCalendar::SourceCalendar(std::shared_ptr<CalendarServices> services, QString identifier)
    : m_services(std::move(services))
{
    m_status.identifier = std::move(identifier);
}

QCoro::Task<void> SourceCalendar::query(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                                        QDeadlineTimer inTime, QDeadlineTimer deadline,
                                        CalendarAnswers &answers)
{
    const std::optional<Reading> reading = co_await readInTime(self, question, inTime);
    if (reading && *reading) {
        self->takeAnswer(question, **reading, answers);
        spawn(remember(self, question, (*reading)->version));
        co_return;
    }
    const CalendarError error = reading ? reading->error()
                                        : CalendarError{CalendarStatus::Condition::silent, u"query"_s,
                                                        u"it did not answer in time"_s};
    const bool isAnswered = co_await hasLastAnswer(self, question, deadline);
    self->takeFailure(error, isAnswered);
    if (isAnswered) {
        const std::vector<CalendarEvent> &events = self->m_answer->reading.events;
        ++answers.answered;
        self->m_status.eventCount = static_cast<int>(events.size());
        std::ranges::copy(events, std::back_inserter(answers.events));
    } else if (self->m_status.isGap()) {
        ++answers.silent;
        answers.error = u"The calendar \"%1\" did not answer: %2"_s.arg(logText(self->m_status.name),
                                                                        logText(error.reason));
    }
    answers.calendars.push_back(self->m_status);
}

QCoro::Task<std::optional<SourceCalendar::Reading>>
SourceCalendar::readInTime(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                           QDeadlineTimer inTime)
{
    if (self->m_lateAttempt) {
        const auto late = std::exchange(self->m_lateAttempt, nullptr);
        if (late->question == question) {
            co_return *late->reading.value();
        }
    }
    if (self->m_attempt && self->m_attempt->question != question) {
        // A reading for another day: wait only for its end.
        const auto earlier = self->m_attempt->reading;
        if (!co_await earlier.until(inTime)) {
            co_return std::nullopt;
        }
    }
    if (!self->m_attempt) {
        self->m_attempt = std::make_shared<Attempt>(question);
        // If the answer is already known, the attempt ends at once and resets m_attempt.
        const std::shared_ptr<Attempt> begun = self->m_attempt;
        spawn(attempt(self, begun));
        if (begun->reading.isResolved()) {
            co_return *begun->reading.value();
        }
    }
    const std::shared_ptr<Attempt> current = self->m_attempt;
    const auto pending = current->reading;
    // A late reading gets little further time: its answer is loaded as soon as it comes.
    const QDeadlineTimer patience =
        current->isLate ? std::min(inTime, QDeadlineTimer(shortPatience, Qt::PreciseTimer)) : inTime;
    if (!co_await pending.until(patience)) {
        current->isLate = true;
        co_return std::nullopt;
    }
    co_return *pending.value();
}

QCoro::Task<void> SourceCalendar::attempt(std::shared_ptr<SourceCalendar> self,
                                          std::shared_ptr<Attempt> attempt)
{
    Reading read = co_await self->read(attempt->question);
    auto reading = std::make_shared<Reading>(std::move(read));
    self->m_attempt.reset();
    const bool isNews = attempt->isLate && reading->has_value() && !self->m_isClosed;
    if (attempt->isLate) {
        self->m_lateAttempt = attempt;
    }
    const auto pending = attempt->reading;
    pending.resolve(std::move(reading));
    if (isNews) {
        self->m_services->announceNews();
    }
}

// The last answer.

/// Whether `m_answer` answers `question` now, from this run or from disk.
QCoro::Task<bool> SourceCalendar::hasLastAnswer(std::shared_ptr<SourceCalendar> self,
                                                CalendarQuestion question, QDeadlineTimer deadline)
{
    const bool isKnown = self->m_answer && self->m_answer->question == question;
    if (isKnown && self->m_answer->reading.shared == self->m_shared) {
        co_return true;
    }
    const bool hasMemory = co_await recall(self, deadline);
    if (!hasMemory) {
        co_return isKnown;
    }
    const auto expanding = startOnPool(self->m_services->workers.threads(),
                                       [memory = self->m_memory, question, shared = self->m_shared] {
                                           return rememberedReading(*memory, question, shared);
                                       });
    if (!co_await expanding.until(deadline) || !*expanding.value()) {
        co_return isKnown;
    }
    self->m_answer = Answer{question, **expanding.value()};
    co_return true;
}

QByteArray SourceCalendar::sharedText(const CalendarQuestion &question) const
{
    return m_answer && m_answer->question == question ? m_answer->reading.sharedText : QByteArray();
}

/// Whether the calendar is remembered.
QCoro::Task<bool> SourceCalendar::recall(std::shared_ptr<SourceCalendar> self, QDeadlineTimer deadline)
{
    if (self->m_memory) {
        co_return true;
    }
    if (!self->m_recalling) {
        self->m_recalling =
            startOnPool(self->m_services->memories.threads(),
                        [memory = self->m_services->memory, identifier = self->m_status.identifier] {
                            return memory.read(identifier);
                        });
    }
    const auto recalling = *self->m_recalling;
    if (!co_await recalling.until(deadline)) {
        co_return false;
    }
    if (!self->m_memory && *recalling.value()) {
        self->m_memory = std::make_shared<const RememberedCalendar>(**recalling.value());
        if (!self->m_status.lastRead) {
            self->m_status.lastRead = self->m_memory->readAt;
        }
    }
    co_return self->m_memory != nullptr;
}

QCoro::Task<bool> SourceCalendar::hasMemory(std::shared_ptr<SourceCalendar> self, QDeadlineTimer deadline)
{
    return recall(std::move(self), deadline);
}

QCoro::Task<void> SourceCalendar::remember(std::shared_ptr<SourceCalendar> self, CalendarQuestion question,
                                           QByteArray version)
{
    const DateInterval span = rememberedSpan(question);
    const bool isKnown = self->m_memory && self->m_memory->span == span && !version.isEmpty() &&
                         version == self->m_memoryVersion;
    if ((isKnown && !self->m_isUnwritten) || self->m_isRemembering || self->m_isClosed) {
        co_return;
    }
    self->m_isRemembering = true;
    if (!isKnown) {
        const CalendarQuestion days{span, question.timeZoneId};
        const std::optional<QByteArray> text = co_await self->capture(days);
        if (text) {
            self->m_memoryVersion = version;
        }
        if (text && (!self->m_memory || self->m_memory->span != span || self->m_memory->text != *text)) {
            self->m_memory = std::make_shared<const RememberedCalendar>(
                RememberedCalendar{self->m_status.identifier, self->m_status.name, self->m_status.account,
                                   currentDate(), span, *text});
            self->m_isUnwritten = true;
        }
    }
    if (self->m_isUnwritten && !self->m_isClosed) {
        co_await writeMemory(self);
    }
    self->m_isRemembering = false;
}

QCoro::Task<void> SourceCalendar::writeMemory(std::shared_ptr<SourceCalendar> self)
{
    const std::shared_ptr<const RememberedCalendar> memory = self->m_memory;
    const auto writing =
        startOnPool(self->m_services->memories.threads(),
                    [folder = self->m_services->memory, memory] { return folder.write(*memory); });
    co_await writing.untilResolved();
    const std::expected<void, Failure> &written = *writing.value();
    // A full disk may have room at the next load; a calendar that is too large is not tried again.
    self->m_isUnwritten = !written && memory->text.size() <= CalendarMemory::maximumTextSize;
    const QString reason = written ? QString() : written.error().localizedDescription;
    if (!written && reason != self->m_loggedMemoryError) {
        self->log(u"calendar not remembered name=\"%1\" reason=\"%2\""_s.arg(logText(self->m_status.name),
                                                                             logText(reason)));
    }
    self->m_loggedMemoryError = reason;
}

void SourceCalendar::forget()
{
    m_isClosed = true;
    m_memory.reset();
    // After a write that is under way, or it would bring the file back.
    [[maybe_unused]] const auto forgetting = startOnPool(
        m_services->memories.threads(), [memory = m_services->memory, identifier = m_status.identifier] {
            memory.forget(identifier);
            return true;
        });
}

// The status.

void SourceCalendar::rename(const QString &name, const QString &account)
{
    m_status.name = name;
    m_status.account = account;
}

void SourceCalendar::log(const QString &message) const
{
    if (!m_isClosed) {
        m_services->log(message);
    }
}

void SourceCalendar::takeAnswer(const CalendarQuestion &question, CalendarReading reading,
                                CalendarAnswers &answers)
{
    if (reading.outdated) {
        takeFailure(*reading.outdated, true);
    } else {
        takeSuccess(reading.askedAt.value_or(currentDate()));
    }
    m_status.eventCount = static_cast<int>(reading.events.size());
    logSkippedEvents(reading.skippedEvents);
    logZones(reading.unknownZones);
    ++answers.answered;
    std::ranges::copy(reading.events, std::back_inserter(answers.events));
    answers.calendars.push_back(m_status);
    m_answer = Answer{question, std::move(reading)};
}

void SourceCalendar::takeSuccess(Date lastRead)
{
    if (m_status.condition == CalendarStatus::Condition::leftOut) {
        log(u"calendar file read again path=\"%1\""_s.arg(logText(m_status.name)));
    } else if (m_status.failingSince) {
        log(u"calendar answers again name=\"%1\""_s.arg(logText(m_status.name)));
    }
    m_status.condition = CalendarStatus::Condition::answers;
    m_status.reason.clear();
    m_status.failingSince.reset();
    m_status.usesLastAnswer = false;
    m_status.lastRead = lastRead;
}

void SourceCalendar::takeFailure(const CalendarError &error, bool hasLastAnswer)
{
    const bool isChange = m_status.condition != error.condition || m_status.usesLastAnswer != hasLastAnswer;
    m_status.condition = error.condition;
    m_status.reason = error.reason;
    m_status.usesLastAnswer = hasLastAnswer;
    m_status.eventCount = 0;
    if (!m_status.failingSince) {
        m_status.failingSince = currentDate();
    }
    if (!isChange) {
        return;
    }
    const QString name = logText(m_status.name);
    const QString reason = logText(error.reason);
    const QString stands = hasLastAnswer ? u"yes"_s : u"no"_s;
    if (error.condition == CalendarStatus::Condition::leftOut) {
        log(u"calendar file left out path=\"%1\" reason=\"%2\" usesLastAnswer=%3"_s.arg(name, reason,
                                                                                        stands));
    } else {
        log(u"calendar did not answer name=\"%1\" step=\"%2\" reason=\"%3\" usesLastAnswer=%4"_s.arg(
            name, error.step, reason, stands));
    }
}

void SourceCalendar::logZones(const std::set<QByteArray> &unknownZones)
{
    for (const QByteArray &zone : unknownZones) {
        if (m_loggedZones.insert(zone).second) {
            log(u"calendar names an unknown time zone calendar=\"%1\" zone=\"%2\""_s.arg(
                logText(m_status.name), logText(QString::fromUtf8(zone))));
        }
    }
}

void SourceCalendar::logSkippedEvents(const std::vector<SkippedEvent> &skippedEvents)
{
    QSet<QByteArray> logged;
    for (const SkippedEvent &skipped : skippedEvents) {
        if (!m_loggedSkips.contains(skipped.key) && !logged.contains(skipped.key)) {
            log(u"calendar event left out calendar=\"%1\" %2"_s.arg(logText(m_status.name), skipped.text));
        }
        logged.insert(skipped.key);
    }
    m_loggedSkips = std::move(logged);
}

} // namespace corvane
