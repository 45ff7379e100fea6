// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/FileCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "Corvane/Utilities/RegularFile.h"

#include <QFile>
#include <QFileInfo>

#include <malloc.h>

#include <expected>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// After parsing a larger file, free memory is returned to the system at once. In bytes.
constexpr qint64 largeFile = 1'000'000;

using Condition = CalendarStatus::Condition;
using Groups = std::vector<ComponentGroup>;

/// Runs on a worker thread.
std::expected<Groups, CalendarError> parseFile(const QByteArray &path)
{
    // Links to any file: others may share their calendars with the user.
    const auto bytes = readRegularFile(path, FileCalendar::maximumSize, LinkTo::anyFile);
    if (!bytes) {
        return std::unexpected(CalendarError{Condition::unreadable, u"read"_s, bytes.error().reason});
    }
    auto calendars = readCalendarText(*bytes);
    if (!calendars) {
        const CalendarTextError &error = calendars.error();
        const bool isHalf = error.isTruncated && !bytes->isEmpty();
        return std::unexpected(
            CalendarError{isHalf ? Condition::unreadable : Condition::leftOut, u"parse"_s, error.reason});
    }
    return groupsOf(std::move(*calendars));
}

/// What is remembered of a file also depends on the events that other files name.
QByteArray versionOf(const FileStamp &stamp, const std::set<IdentifierKey> &shared)
{
    return QByteArray::number(stamp.changed) + '.' + QByteArray::number(stamp.changedNanoseconds) + '.' +
           QByteArray::number(stamp.inode) + '.' +
           QByteArray::number(qHashRange(shared.begin(), shared.end()));
}

/// None if the file cannot be read, is incomplete, or names no event.
std::optional<std::set<IdentifierKey>> identifiersInFile(const QByteArray &path)
{
    const auto bytes = readRegularFile(path, FileCalendar::maximumSize, LinkTo::anyFile);
    if (!bytes) {
        return std::nullopt;
    }
    const auto text = toCalendarText(*bytes);
    auto identifiers = text ? identifiersIn(*text) : std::set<IdentifierKey>();
    return identifiers.empty() ? std::nullopt : std::optional(std::move(identifiers));
}

} // namespace

FileCalendar::FileCalendar(std::shared_ptr<CalendarServices> services, const QByteArray &path)
    : SourceCalendar(services, identifierPrefix + QFile::decodeName(path))
    , m_path(path)
    , m_expander(std::make_shared<CalendarExpander>(std::move(services)))
{
    const QFileInfo file(QFile::decodeName(path));
    rename(file.fileName(), file.path());
}

FileCalendar::~FileCalendar() = default;

QByteArray FileCalendar::pathOf(const QString &identifier)
{
    return QFile::encodeName(identifier.mid(identifierPrefix.size()));
}

void FileCalendar::setUnreachable(const QString &reason)
{
    m_unreachable = reason;
}

void FileCalendar::setStamp(const FileStamp &stamp)
{
    m_unreachable.clear();
    if (m_stamp != stamp) {
        m_stamp = stamp;
        m_expander->forgetSuspects();
    }
}

void FileCalendar::close()
{
    SourceCalendar::close();
    m_expander->cancel();
}

QCoro::Task<void> FileCalendar::index(std::shared_ptr<FileCalendar> self, QDeadlineTimer deadline)
{
    co_await indexFile(self, deadline);
    // If the file cannot be read in this run, its contents from an earlier run are used.
    if (!self->m_identifiers->empty() || !co_await hasMemory(self, deadline)) {
        co_return;
    }
    const auto indexing = startOnPool(self->services().workers.threads(),
                                      [memory = self->memory()] { return identifiersIn(memory->text); });
    if (co_await indexing.until(deadline) && self->m_identifiers->empty()) {
        self->m_identifiers = indexing.value();
    }
}

QCoro::Task<void> FileCalendar::indexFile(std::shared_ptr<FileCalendar> self, QDeadlineTimer deadline)
{
    if (!self->m_unreachable.isEmpty() || self->m_indexedStamp == self->m_stamp) {
        co_return;
    }
    const bool wasLate = self->m_indexing.has_value();
    if (!wasLate) {
        self->m_indexing =
            Indexing{self->m_stamp, startOnPool(self->services().files.threads(),
                                                [path = self->m_path] { return identifiersInFile(path); })};
    }
    const Indexing indexing = *self->m_indexing;
    if (!indexing.identifiers.isResolved() && (wasLate || !co_await indexing.identifiers.until(deadline))) {
        co_return;
    }
    self->m_indexing.reset();
    self->m_indexedStamp = indexing.stamp;
    if (const auto &identifiers = *indexing.identifiers.value()) {
        self->m_identifiers = std::make_shared<const std::set<IdentifierKey>>(*identifiers);
    }
}

QCoro::Task<SourceCalendar::Reading> FileCalendar::read(CalendarQuestion question)
{
    if (!m_unreachable.isEmpty()) {
        co_return std::unexpected(CalendarError{Condition::silent, u"read"_s, m_unreachable});
    }
    if (m_contents && m_contents->stamp == m_stamp && m_contents->question == question &&
        m_contents->reading.shared == shared()) {
        CalendarReading known = m_contents->reading;
        co_return known;
    }
    if (m_rejection && m_rejection->stamp == m_stamp) {
        co_return std::unexpected(m_rejection->error);
    }
    const FileStamp stamp = m_stamp;
    const std::set<IdentifierKey> sharedEvents = shared();
    const auto parsing = startOnPool(services().files.threads(), [path = m_path] { return parseFile(path); });
    co_await parsing.untilResolved();
    const auto &parsed = parsing.value();
    if (!*parsed) {
        m_rejection.reset();
        if (parsed->error().step == u"parse") {
            m_rejection = Rejection{stamp, parsed->error()};
        }
        co_return std::unexpected(parsed->error());
    }
    const auto sharedText = std::make_shared<QByteArray>();
    CalendarExpander::Work work = [parsed, sharedEvents, sharedText, span = rememberedSpan(question),
                                   isLarge = stamp.size > largeFile](const ExpansionRequest &request,
                                                                     ExpansionControl &control) {
        Groups &groups = **parsed;
        Groups own = groups;
        if (!sharedEvents.empty()) {
            *sharedText = captureGroups(takeGroups(own, sharedEvents));
        }
        CalendarExpander::Outcome outcome{expandGroups(own, request, control), {}};
        if (outcome.expansion.isComplete) {
            outcome.text = captureSpan(groups, sharedEvents, request, span, control);
        }
        own.clear(); // before malloc_trim()
        groups.clear();
        if (isLarge) {
            ::malloc_trim(0);
        }
        return outcome;
    };
    auto outcome = co_await CalendarExpander::expand(m_expander, question, std::move(work));
    if (!outcome) {
        co_return std::unexpected(outcome.error());
    }
    CalendarReading reading{.events = std::move(outcome->expansion.events),
                            .skippedEvents = std::move(outcome->expansion.skippedEvents),
                            .unknownZones = std::move(outcome->expansion.unknownZones),
                            .shared = sharedEvents,
                            .sharedText = *sharedText,
                            .version = versionOf(stamp, sharedEvents)};
    noteUnfinished(outcome->expansion, reading);
    if (outcome->expansion.isComplete) {
        m_contents = Contents{stamp, question, reading, std::move(outcome->text)};
    }
    co_return reading;
}

QCoro::Task<std::optional<QByteArray>> FileCalendar::capture(CalendarQuestion span)
{
    if (!m_contents || rememberedSpan(m_contents->question) != span.interval) {
        co_return std::nullopt;
    }
    std::optional<QByteArray> text = std::exchange(m_contents->text, std::nullopt);
    co_return text;
}

} // namespace corvane
