// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "Corvane/Services/CombinedLessonScheduleStore.h"
#include "Corvane/Services/LessonWorkflowEngine.h"

#include <QTimeZone>

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Date day = dateSince1970(1794787200); // a midnight in UTC

std::vector<Lesson> lessons(int count)
{
    std::vector<Lesson> result;
    for (int index = 0; index < count; ++index) {
        const TeachingPlatform platform = allTeachingPlatforms[static_cast<std::size_t>(index) % 5];
        result.push_back({.id = QUuid::createUuid(),
                          .studentName = u"Student %1"_s.arg(index % 97),
                          .platform = platform,
                          .startTime = day + Seconds{1800.0 * (index * 7 % count)},
                          .duration = Seconds{1500},
                          .profile = PlatformProfile::defaults().at(platform)});
    }
    return result;
}

/// One evaluation over a day of lessons, at varying moments of the day.
void engineOverADay(benchmark::State &state)
{
    const SystemDateProvider dateProvider;
    const LessonWorkflowEngine engine(dateProvider);
    const std::vector<Lesson> today = lessons(static_cast<int>(state.range(0)));
    double second = 0;
    for ([[maybe_unused]] const auto _ : state) {
        second = second < 86399 ? second + 1 : 0;
        benchmark::DoNotOptimize(engine.action(today, day + Seconds{second}));
    }
}
BENCHMARK(engineOverADay)->Arg(30)->Arg(300);

/// Typical calendar events, lessons or not.
void parserOverEvents(benchmark::State &state)
{
    const QStringList titles{u"Zoom - Anna (ABC)"_s, u"LingoAce Lesson: Tom"_s,    u"王小明"_s,
                             u"Dentist"_s,           u"Team meeting, 2nd floor"_s, u"拓课云 Anna 12"_s};
    std::vector<CalendarLessonEvent> events;
    for (int index = 0; index < state.range(0); ++index) {
        const Date start = day + Seconds{60.0 * (index % 1440)};
        events.push_back({.title = titles.at(index % titles.size()),
                          .startDate = start,
                          .endDate = start + Seconds{1800},
                          .location = u"https://us02web.zoom.us/j/123456789"_s,
                          .notes = u"Join by phone or with the link above. "_s.repeated(20),
                          .url = std::nullopt});
    }
    const CalendarLessonParser parser(PlatformProfile::defaults());
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(parser.lessons(events));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(parserOverEvents)->Arg(10000)->Unit(benchmark::kMillisecond);

void combinedStoreOverLessons(benchmark::State &state)
{
    const std::vector<Lesson> input = lessons(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(CombinedLessonScheduleStore::uniqueAndSorted(input));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(combinedStoreOverLessons)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
