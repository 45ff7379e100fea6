// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/FileCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarCapture.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "Corvane/Platform/Linux/EvolutionData/RegularFile.h"

#include <QFile>
#include <QFileInfo>

#include <malloc.h>

#include <expected>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// What the taking apart of a larger file has cost is given back to the system at once. In bytes.
constexpr qint64 largeFile = 1'000'000;

using Condition = CalendarStatus::Condition;
using Groups = std::vector<ComponentGroup>;

/// On a worker thread.
std::expected<Groups, CalendarError> parseFile(const QByteArray &path)
{
    const auto bytes = readRegularFile(path, FileCalendar::maximumSize);
    if (!bytes) {
        return std::unexpected(CalendarError{Condition::unopened, u"read"_s, bytes.error()});
    }
    auto calendars = readCalendarText(*bytes);
    if (!calendars) {
        const CalendarTextError &error = calendars.error();
        const bool isHalf = error.isTruncated && !bytes->isEmpty();
        return std::unexpected(
            CalendarError{isHalf ? Condition::unopened : Condition::leftOut, u"parse"_s, error.reason});
    }
    return groupsOf(std::move(*calendars));
}

/// On a worker thread.
CalendarExpander::Outcome expandFile(const Groups &groups, ExpansionRequest request, DateInterval span,
                                     ExpansionControl &control)
{
    CalendarExpander::Outcome outcome{expandGroups(groups, request, control), {}};
    outcome.text = captureSpan(groups, std::move(request), span, control);
    return outcome;
}

} // namespace

FileCalendar::FileCalendar(std::shared_ptr<CalendarServices> services, const QByteArray &path)
    : SourceCalendar(services, u"file:"_s + QFile::decodeName(path))
    , m_path(path)
    , m_expander(std::make_shared<CalendarExpander>(std::move(services)))
{
    const QFileInfo file(QFile::decodeName(path));
    rename(file.fileName(), file.path());
}

FileCalendar::~FileCalendar() = default;

void FileCalendar::setStamp(const FileStamp &stamp)
{
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

QCoro::Task<SourceCalendar::Reading> FileCalendar::read(CalendarQuestion question)
{
    if (m_contents && m_contents->stamp == m_stamp && m_contents->question == question) {
        CalendarReading known = m_contents->reading;
        co_return known;
    }
    if (m_rejection && m_rejection->stamp == m_stamp) {
        co_return std::unexpected(m_rejection->error);
    }
    const FileStamp stamp = m_stamp;
    const auto parsing =
        startOnPool(services().workers.threads(), [path = m_path] { return parseFile(path); });
    co_await parsing.untilResolved();
    const auto parsed = parsing.value();
    if (!*parsed) {
        m_contents.reset();
        m_rejection.reset();
        if (parsed->error().step == u"parse") {
            m_rejection = Rejection{stamp, parsed->error()};
        }
        co_return std::unexpected(parsed->error());
    }
    CalendarExpander::Work work = [parsed, span = rememberedSpan(question), isLarge = stamp.size > largeFile](
                                      const ExpansionRequest &request, ExpansionControl &control) {
        CalendarExpander::Outcome outcome = expandFile(**parsed, request, span, control);
        parsed->value().clear(); // before the memory is given back
        if (isLarge) {
            ::malloc_trim(0);
        }
        return outcome;
    };
    auto outcome = co_await CalendarExpander::expand(m_expander, question, std::move(work));
    if (!outcome) {
        co_return std::unexpected(outcome.error());
    }
    CalendarReading reading{std::move(outcome->expansion.events), std::move(outcome->expansion.skippedEvents),
                            std::move(outcome->expansion.unknownZones),
                            QByteArray::number(stamp.changed) + '.' +
                                QByteArray::number(stamp.changedNanoseconds) + '.' +
                                QByteArray::number(stamp.inode)};
    m_contents.reset();
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
