// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Measures the response times of the menu bar panel on a day of 300 lessons, and with a huge name. Uses the
// display in DISPLAY, or starts a private one.

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Views/MenuBarContentView.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/ViewModelFixture.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int lessonCount = 300;

struct MenuBarPanelFixture : ViewModelFixture {
    MenuBarPanelFixture() : MenuBarPanelFixture(aFullDay()) {}

    explicit MenuBarPanelFixture(std::vector<Lesson> lessons) : ViewModelFixture("10:20:30")
    {
        settings.setHasCompletedWelcome(true);
        start(std::move(lessons));
    }

    [[nodiscard]] static std::vector<Lesson> aFullDay()
    {
        std::vector<Lesson> lessons;
        lessons.reserve(lessonCount);
        for (int number = 0; number < lessonCount; ++number) {
            lessons.push_back(sampleLesson(u"Student number %1"_s.arg(number),
                                           at("06:00:00") + minutes(3) * number, minutes(25),
                                           allTeachingPlatforms.at(std::size_t(number) % 5)));
        }
        return lessons;
    }

    [[nodiscard]] std::unique_ptr<MenuBarContentView> view()
    {
        return std::make_unique<MenuBarContentView>(
            *model, MenuActions{.hasWindow = [](const WindowName &) { return true; },
                                .openWindow = [](const WindowName &) {},
                                .openWindowBeside = [](const WindowName &) {},
                                .quit = [] {}});
    }
};

double milliseconds(std::chrono::steady_clock::time_point since)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since).count();
}

/// From a wheel notch to the end of the painting that it causes; also reports the longest.
void aNotchOfTheWheel(benchmark::State &state)
{
    MenuBarPanelFixture fixture;
    const auto view = fixture.view();
    view->findChild<look::SegmentedControl *>()->setSelection(1);
    view->resize(view->sizeHint());
    view->show();
    QCoreApplication::processEvents();
    const auto *scroll = view->findChild<look::ScrollView *>();
    QScrollBar *bar = scroll->verticalScrollBar();
    const QPointF middle = scroll->viewport()->rect().center();
    int direction = -1;
    double longest = 0;
    for ([[maybe_unused]] const auto _ : state) {
        if (bar->value() == bar->maximum() || bar->value() == bar->minimum()) {
            direction = bar->value() == bar->minimum() ? -1 : 1;
        }
        const auto begin = std::chrono::steady_clock::now();
        QWheelEvent notch(middle, scroll->viewport()->mapToGlobal(middle), {}, {0, direction * 120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(scroll->viewport(), &notch);
        QCoreApplication::processEvents();
        longest = std::max(longest, milliseconds(begin));
    }
    state.counters["longest_ms"] = longest;
}

/// One heartbeat with all of the day's rows in the list, and the painting that it causes.
void aSecondOfTheDay(benchmark::State &state)
{
    MenuBarPanelFixture fixture;
    const auto view = fixture.view();
    view->findChild<look::SegmentedControl *>()->setSelection(1);
    view->resize(view->sizeHint());
    view->show();
    QCoreApplication::processEvents();
    double longest = 0;
    for ([[maybe_unused]] const auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        fixture.clock.advance(Seconds{1});
        QCoreApplication::processEvents();
        longest = std::max(longest, milliseconds(begin));
    }
    state.counters["longest_ms"] = longest;
}

/// From selecting "All today" to the end of the painting.
void switchingToAllToday(benchmark::State &state)
{
    MenuBarPanelFixture fixture;
    for ([[maybe_unused]] const auto _ : state) {
        state.PauseTiming();
        auto view = fixture.view();
        view->resize(view->sizeHint());
        view->show();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        view->findChild<look::SegmentedControl *>()->setSelection(1);
        QCoreApplication::processEvents();
        state.PauseTiming();
        view.reset();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

void makingTheMenuBarPanel(benchmark::State &state)
{
    MenuBarPanelFixture fixture;
    for ([[maybe_unused]] const auto _ : state) {
        const auto view = fixture.view();
        benchmark::DoNotOptimize(view->grab());
    }
}

/// With a name such as a broken calendar may contain: 1.2 million characters.
void makingTheMenuBarPanelWithAHugeName(benchmark::State &state)
{
    const QString name = u"王<b>\n\u202E "_s.repeated(200'000);
    MenuBarPanelFixture fixture(
        {sampleLesson(name, at("10:00:00"), minutes(50)), sampleLesson(name, at("11:00:00"), minutes(50))});
    for ([[maybe_unused]] const auto _ : state) {
        const auto view = fixture.view();
        benchmark::DoNotOptimize(view->grab());
    }
}

BENCHMARK(aNotchOfTheWheel)->Unit(benchmark::kMillisecond)->Iterations(1000);
BENCHMARK(aSecondOfTheDay)->Unit(benchmark::kMillisecond)->Iterations(200);
BENCHMARK(switchingToAllToday)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(makingTheMenuBarPanel)->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(makingTheMenuBarPanelWithAHugeName)->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char *argv[])
{
    std::unique_ptr<TestDesktop> desktop;
    if (!qEnvironmentVariableIsSet("DISPLAY")) {
        desktop = std::make_unique<TestDesktop>(QSize(1280, 800));
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new look::Style);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
