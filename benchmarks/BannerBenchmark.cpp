// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Measures the time until a banner is visible, and its parts. Uses the display in DISPLAY, or starts a
// private one.

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Views/FloatingBannerView.h"
#include "tests/support/TestDesktop.h"

#include <QApplication>
#include <QScreen>

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr CardShape cardShape{look::banner::cornerRadius, look::banner::shadowBlur,
                              look::banner::shadowOpacity};

TeachingAction startNow()
{
    const Lesson lesson{.id = {},
                        .studentName = u"Anna"_s,
                        .platform = TeachingPlatform::zoom,
                        .startTime = currentDate(),
                        .duration = Seconds{1500},
                        .profile = PlatformProfile::defaults().at(TeachingPlatform::zoom)};
    return {.state = LessonState::startNow,
            .lesson = lesson,
            .nextLesson = lesson,
            .message = u"Start now"_s,
            .priority = TeachingActionPriority::urgent,
            .effectiveDate = currentDate(),
            .nextTransitionDate = std::nullopt};
}

/// From the creation of a banner panel to its first frame on the X server.
void firstFrameOfABanner(benchmark::State &state)
{
    X11BannerPanels bannerPanels(
        [](const TeachingAction &action, std::function<void()> onDismiss) {
            return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
        },
        cardShape);
    QScreen *screen = QGuiApplication::primaryScreen();
    const Rect home{100, 200, 1000, 280};
    const int iconX = 100 + look::banner::leadingPadding + look::banner::iconArea / 2;
    const int iconY = screen->geometry().height() - 200 - 280 / 2 - look::banner::iconArea / 2 + 8;
    const auto isSeen = [&] {
        return screen->grabWindow(0, iconX, iconY, 1, 1).toImage().pixelColor(0, 0).red() > 0;
    };
    for ([[maybe_unused]] const auto _ : state) {
        const Seconds begin = uptime();
        const auto bannerPanel = bannerPanels.makeBannerPanel(home, {}, startNow(), {});
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        bannerPanel->setAlpha(0);
        bannerPanel->orderFrontRegardless();
        bannerPanel->animate(
            {.duration = Seconds{0.22}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home}, {});
        do {
            QCoreApplication::processEvents();
        } while (!isSeen());
        state.SetIterationTime((uptime() - begin).count());
        bannerPanel->close();
        do {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (isSeen());
    }
}

void makingTheCard(benchmark::State &state)
{
    for ([[maybe_unused]] const auto _ : state) {
        FloatingBannerView view(startNow(), {});
        benchmark::DoNotOptimize(view.grab());
    }
}

void theShadow(benchmark::State &state)
{
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(cardShadow(cardShape, {1000, 280}, 1));
    }
}

void aSymbol(benchmark::State &state)
{
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(look::symbolPixmap(u"exclamationmark.triangle.fill"_s, 68, Qt::white, 1,
                                                    look::SymbolWeight::bold));
    }
}

BENCHMARK(firstFrameOfABanner)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);
BENCHMARK(makingTheCard)->Unit(benchmark::kMillisecond);
BENCHMARK(theShadow)->Unit(benchmark::kMillisecond);
BENCHMARK(aSymbol)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    std::unique_ptr<TestDesktop> desktop;
    if (!qEnvironmentVariableIsSet("DISPLAY")) {
        desktop = std::make_unique<TestDesktop>(QSize(1280, 800));
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
