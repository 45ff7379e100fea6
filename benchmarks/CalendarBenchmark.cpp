// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Measures today's query over calendars of 50,000 events, in the calendar service with an open calendar and
// in a file, and the time to the first answer. Run it in an isolated environment (tests/support/isolated).

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/CalendarService.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int eventCount = 50'000;
constexpr int seriesCount = 200;
constexpr double middle = 1747180800; // 14 May 2025, UTC
constexpr Seconds longestOpening{300};

/// Half-hour events round the clock and some weekly series, as in a calendar kept for years.
QByteArray calendar()
{
    QByteArray text;
    for (int number = 0; number < eventCount; ++number) {
        const int fromMiddle = number - eventCount / 2;
        const double start = middle + fromMiddle * 1800.0;
        const auto time = [](double moment) {
            return toDateTime(dateSince1970(moment)).toString(u"yyyyMMdd'T'hhmmss'Z'"_s).toLatin1();
        };
        text += "BEGIN:VEVENT\nUID:event-" + QByteArray::number(number) +
                "\nDTSTAMP:20250101T000000Z\nDTSTART:" + time(start) + "\nDTEND:" + time(start + 1800) +
                "\nSUMMARY:Zoom - Student " + QByteArray::number(number % 40) +
                "\nLOCATION:https://zoom.us/j/123456\nDESCRIPTION:Unit 7\\, page 12\n";
        if (number < seriesCount) {
            text += "RRULE:FREQ=WEEKLY\n";
        }
        text += "END:VEVENT\n";
    }
    return calendarText(text);
}

const TimeZoneId utc = [] { return QByteArray("UTC"); };

struct Room {
    QTemporaryDir folder;
    DebugLogService log{folder.filePath(u"log"_s)};
    std::shared_ptr<CalendarServices> services =
        std::make_shared<CalendarServices>(log, folder.filePath(u"memory"_s));
};

/// The time of a query. `isAsked`: of one that asks the calendar, whether or not its answer is known.
void query(benchmark::State &state, std::shared_ptr<CalendarSource> source, bool isAsked)
{
    MergedEventStore store({std::move(source)}, utc);
    const DateInterval day{dateSince1970(middle), dateSince1970(middle + 86400)};
    // Opening such a calendar for the first time takes longer than one load.
    const Seconds begin = uptime();
    bool isOpen = false;
    while (!isOpen && uptime() - begin < longestOpening) {
        isOpen = QCoro::waitFor(store.requestFullAccessToEvents()).value_or(false) &&
                 QCoro::waitFor(store.events(day)).has_value();
    }
    const double opening = (uptime() - begin).count();
    if (!isOpen) {
        state.SkipWithError("the calendar did not answer");
        return;
    }
    std::size_t found = 0;
    for ([[maybe_unused]] const auto _ : state) {
        if (isAsked) {
            store.refresh(CalendarRefresh::wished);
        }
        found = QCoro::waitFor(store.events(day)).value_or(std::vector<CalendarEvent>()).size();
    }
    state.counters["events"] = static_cast<double>(found);
    state.counters["opening (s)"] = opening;
}

void todaysQueryOverAnOpenCalendar(benchmark::State &state)
{
    CalendarService::writeCalendar(calendar());
    CalendarService service;
    Room room;
    query(state, std::make_shared<EvolutionCalendars>(room.services), state.range(0) != 0);
}
BENCHMARK(todaysQueryOverAnOpenCalendar)
    ->ArgName("asked")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void todaysQueryOverAFile(benchmark::State &state)
{
    Room room;
    QFile file(room.folder.filePath(u"calendar.ics"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(calendar()) < 0) {
        state.SkipWithError("the file cannot be written");
        return;
    }
    file.close();
    query(state, std::make_shared<IcsFolders>(room.services, QStringList{room.folder.path()}), true);
}
BENCHMARK(todaysQueryOverAFile)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
