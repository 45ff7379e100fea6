// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Measures the time until a sound is heard, and until its call is answered, on a private sound server. Run it
// in an isolated environment (tests/support/isolated).

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include "tests/support/PrivateSoundServer.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// After this time a sound counts as missing.
constexpr Seconds limit{10};

/// From the call to its answer. The first call, which connects, is not measured.
void untilTheAnswer(benchmark::State &state)
{
    const PrivateSoundServer server;
    CanberraSounds sounds({}, limit);
    bool hasPlayed = QCoro::waitFor(sounds.play(u"Glass"_s));
    for ([[maybe_unused]] const auto _ : state) {
        hasPlayed = QCoro::waitFor(sounds.play(u"Glass"_s)) && hasPlayed;
    }
    if (!hasPlayed) {
        state.SkipWithError("the sound did not play");
    }
}

/// From the call to the first sample in a recorder, which receives samples every 5 ms. A sound after a rest
/// connects to the server first.
void untilItIsHeard(benchmark::State &state)
{
    PrivateSoundServer server;
    auto sounds = std::make_unique<CanberraSounds>(nullptr, limit);
    const bool isConnected = state.range(0) != 0 && QCoro::waitFor(sounds->play(u"Glass"_s));
    server.startRecording();
    for ([[maybe_unused]] const auto _ : state) {
        // Wait until the previous sound has faded.
        while (!server.isSilent()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        }
        if (!isConnected) {
            sounds = std::make_unique<CanberraSounds>(nullptr, limit);
        }
        const Seconds begin = uptime();
        auto task = sounds->play(u"Glass"_s);
        while (server.peak() < 0.02 && uptime() - begin < limit) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
        }
        state.SetIterationTime((uptime() - begin).count());
        if (!QCoro::waitFor(task)) {
            state.SkipWithError("the sound did not play");
            return;
        }
    }
}

BENCHMARK(untilTheAnswer)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(untilItIsHeard)
    ->ArgName("connected")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(10);

} // namespace

int main(int argc, char *argv[])
{
    qputenv("XDG_DATA_DIRS", QUILLET_BUILD_SHARE ":/usr/share");
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
