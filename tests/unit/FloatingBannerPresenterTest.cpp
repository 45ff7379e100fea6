// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/FloatingBannerPresenter.h"

#include "tests/support/FakeBannerPanels.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Recording.h"
#include "tests/support/Samples.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Size bannerSize{1000, 280};

TeachingAction action(LessonState state = LessonState::prepare, Seconds untilStart = minutes(4))
{
    const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00") + untilStart, minutes(25));
    return {.state = state,
            .lesson = lesson,
            .nextLesson = lesson,
            .message = u"4 min before next lesson"_s,
            .priority = TeachingActionPriority::attention,
            .effectiveDate = at("10:00:00"),
            .nextTransitionDate = std::nullopt};
}

Point origin(Rect visible, NotificationPosition position)
{
    return FloatingBannerPresenter::origin(bannerSize, visible, position);
}

} // namespace

class FloatingBannerPresenterTest : public QObject {
    Q_OBJECT

    struct FloatingBannerPresenterFixture {
        ManualClock clock{at("10:00:00")};
        QTemporaryDir library;
        TemporarySettings temporary;
        FakeLoginItem loginItem;
        AppSettings settings{temporary.store(), temporary.store(), loginItem};
        DebugLogService logger{library.path()};
        RecordingSoundPlayer sound;
        FakeScreens screens;
        FakeBannerPanels bannerPanels;
        std::unique_ptr<FloatingBannerPresenter> presenter =
            std::make_unique<FloatingBannerPresenter>(sound, logger, settings, screens, bannerPanels);

        /// Presents `action`; seconds until its banner panel begins to fade.
        double timeOnScreen(const TeachingAction &action)
        {
            presenter->present(action);
            const Seconds begin = uptime();
            while (!presenter->visibleWindows().empty() && uptime() - begin < Seconds{1000}) {
                clock.advance(Seconds{0.25});
            }
            return (uptime() - begin).count();
        }
    };

private Q_SLOTS:
    void aSecondBannerReplacesTheFirstAndOutlivesItsTimer()
    {
        FloatingBannerPresenterFixture f;
        f.presenter->present(action(LessonState::prepare));
        f.clock.advance(Seconds{1});
        f.presenter->present(action(LessonState::oneMinuteWarning));
        QCOMPARE(f.bannerPanels.records.size(), std::size_t{2});
        QVERIFY(f.bannerPanels.records[0]->isClosed);
        QCOMPARE(f.bannerPanels.records[0]->animations.size(), std::size_t{1}); // it faded in, never out
        QCOMPARE(f.bannerPanels.visibleBannerPanels().size(), std::size_t{1});
        // The first banner's time ends without affecting the second.
        f.clock.advance(Seconds{9.5});
        QVERIFY(f.bannerPanels.records[1]->isVisible);
        QCOMPARE(f.bannerPanels.records[0]->animations.size(), std::size_t{1});
        QCOMPARE(f.presenter->visibleWindows().size(), std::size_t{1});
        f.clock.advance(Seconds{1});
        QVERIFY(f.bannerPanels.records[1]->isClosed);
        QVERIFY(f.presenter->visibleWindows().empty());
    }

    void aDurationOfZeroStillShowsTheBannerForASecond()
    {
        FloatingBannerPresenterFixture f;
        f.settings.setNotificationDuration(0);
        QCOMPARE(f.timeOnScreen(action()), 1.0);
        f.settings.setNotificationDuration(-5);
        QCOMPARE(f.timeOnScreen(action()), 1.0);
        f.settings.setNotificationDuration(std::nan(""));
        QCOMPARE(f.timeOnScreen(action()), 1.0);
    }

    void theChosenDurationIsReadAtEachPresentation()
    {
        FloatingBannerPresenterFixture f;
        QCOMPARE(f.timeOnScreen(action()), 10.0);
        f.settings.setNotificationDuration(5);
        QCOMPARE(f.timeOnScreen(action()), 5.0);
        f.settings.setNotificationDuration(7.5);
        QCOMPARE(f.timeOnScreen(action()), 7.5);
    }

    void aJoinBannerStaysUntilTheStartAndThenAsLongAsAnyOther()
    {
        FloatingBannerPresenterFixture f;
        QCOMPARE(f.timeOnScreen(action(LessonState::joinPlatform, Seconds{90})), 100.0);
        QCOMPARE(f.timeOnScreen(action(LessonState::joinPlatform, Seconds{-5})), 10.0);
        TeachingAction next = action(LessonState::joinPlatform, Seconds{30});
        next.lesson.reset();
        QCOMPARE(f.timeOnScreen(next), 40.0);
        next.nextLesson.reset();
        QCOMPARE(f.timeOnScreen(next), 10.0);
        QCOMPARE(f.timeOnScreen(action(LessonState::startNow, Seconds{20})), 10.0);
    }

    void anEndlessDurationKeepsTheBannerUp()
    {
        FloatingBannerPresenterFixture f;
        f.settings.setNotificationDuration(std::numeric_limits<double>::infinity());
        f.presenter->present(action());
        f.clock.advance(minutes(600));
        QCOMPARE(f.bannerPanels.visibleBannerPanels().size(), std::size_t{1});
    }

    void bottomRightKeepsItsMargins()
    {
        QCOMPARE(origin({0, 25, 1440, 875}, NotificationPosition::bottomRight), (Point{392, 73}));
    }

    void eachPositionHasItsOrigin()
    {
        const Rect visible{100, 25, 1440, 875};
        QCOMPARE(origin(visible, NotificationPosition::center), (Point{320, 322.5}));
        QCOMPARE(origin(visible, NotificationPosition::top), (Point{320, 572}));
        QCOMPARE(origin(visible, NotificationPosition::bottom), (Point{320, 73}));
        QCOMPARE(origin(visible, NotificationPosition::topLeft), (Point{148, 572}));
        QCOMPARE(origin(visible, NotificationPosition::topRight), (Point{492, 572}));
        QCOMPARE(origin(visible, NotificationPosition::bottomLeft), (Point{148, 73}));
        QCOMPARE(origin(visible, NotificationPosition::bottomRight), (Point{492, 73}));
    }

    void inASmallAreaTheRightAndTopMarginsWin()
    {
        QCOMPARE(origin({0, 0, 900, 875}, NotificationPosition::center).x, -148.0);
        QCOMPARE(origin({0, 0, 900, 875}, NotificationPosition::topLeft).x, -148.0);
        QCOMPARE(origin({0, 0, 1440, 300}, NotificationPosition::bottom).y, -28.0);
        QCOMPARE(origin({0, 0, 1096, 376}, NotificationPosition::center), (Point{48, 48}));
    }

    void withTwoDisplaysTheOneUnderThePointerIsUsed()
    {
        FloatingBannerPresenterFixture f;
        const Screen left{.name = u"left"_s, .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}};
        const Screen right{
            .name = u"right"_s, .frame = {1440, 0, 1920, 1080}, .visibleFrame = {1440, 0, 1920, 1080}};
        f.screens.allScreens = {left, right};
        f.screens.main = left;
        f.screens.pointer = {1440, 500};
        f.presenter->present(action());
        QCOMPARE(f.bannerPanels.records.back()->initialFrame, (Rect{1900, 400, 1000, 280}));
        f.screens.pointer = {1439, 500};
        f.presenter->present(action());
        QCOMPARE(f.bannerPanels.records.back()->initialFrame, (Rect{220, 310, 1000, 280}));
    }

    void theKeyWindowsScreenComesFirstAndTheMainOneAfterThePointer()
    {
        FloatingBannerPresenterFixture f;
        const Screen left{.name = u"left"_s, .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}};
        const Screen right{
            .name = u"right"_s, .frame = {1440, 0, 1920, 1080}, .visibleFrame = {1440, 0, 1920, 1080}};
        f.screens.allScreens = {left, right};
        f.screens.main = left;
        const auto x = [&f] {
            f.presenter->present(action());
            return f.bannerPanels.records.back()->initialFrame.x;
        };
        f.screens.keyWindow = right;
        QCOMPARE(x(), 1900.0);
        f.screens.keyWindow.reset();
        f.screens.pointer = {-5, -5};
        QCOMPARE(x(), 220.0);
        f.screens.main.reset();
        f.screens.allScreens = {right, left};
        QCOMPARE(x(), 1900.0);
        f.screens.allScreens.clear();
        QCOMPARE(x(), -1048.0);
    }

    void theBannerAppearsFromNinetyFivePerCent()
    {
        FloatingBannerPresenterFixture f;
        f.presenter->present(action());
        const auto &record = *f.bannerPanels.records.back();
        const Rect finalFrame{220, 322.5, 1000, 280};
        QCOMPARE(record.initialFrame, finalFrame);
        QCOMPARE(record.frame, finalFrame.scaledAboutCentre(0.95));
        QCOMPARE(record.alpha, 0.0);
        QVERIFY(record.isVisible);
        QCOMPARE(record.calls,
                 (QStringList{u"setFrame"_s, u"setAlpha"_s, u"orderFrontRegardless"_s, u"animate"_s}));
        QCOMPARE(
            record.animations,
            (std::vector{BannerPanelAnimation{
                .duration = Seconds{0.22}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = finalFrame}}));
        f.clock.advance(Seconds{0.22});
        QCOMPARE(record.frame, finalFrame);
        QCOMPARE(record.alpha, 1.0);
        QCOMPARE(record.traits, (BannerPanelTraits{.level = 1000,
                                                   .collectionBehavior = 329,
                                                   .styleMask = 128,
                                                   .hasShadow = true,
                                                   .hidesOnDeactivate = false,
                                                   .ignoresMouseEvents = false}));
    }

    void dismissingFadesToNinetySevenPerCentAndThenCloses()
    {
        FloatingBannerPresenterFixture f;
        f.presenter->present(action());
        f.clock.advance(Seconds{1});
        const auto record = f.bannerPanels.records.back();
        record->onDismiss();
        QVERIFY(f.presenter->visibleWindows().empty());
        QCOMPARE(record->animations.back(),
                 (BannerPanelAnimation{.duration = Seconds{0.24},
                                       .curve = TimingCurve::easeIn,
                                       .alpha = 0,
                                       .frame = record->initialFrame.scaledAboutCentre(0.97)}));
        QVERIFY(record->isVisible);
        f.clock.advance(Seconds{0.25});
        QVERIFY(record->isClosed);
        // The dismissed banner's timer ends without effect.
        f.clock.advance(Seconds{20});
        QCOMPARE(record->animations.size(), std::size_t{2});
        record->onDismiss();
        QCOMPARE(record->animations.size(), std::size_t{2});
    }

    void theSoundIsPlayedForEveryBannerWhateverTheSettingSays()
    {
        FloatingBannerPresenterFixture f;
        f.settings.setPlaysSound(false);
        f.presenter->present(action());
        f.presenter->present(action());
        QCOMPARE(f.sound.played, 2);
    }

    void eachPresentationIsLogged()
    {
        FloatingBannerPresenterFixture f;
        f.presenter->present(action(LessonState::oneMinuteWarning));
        QCOMPARE(f.logger.latestLines(),
                 (QStringList{u"2026-11-16T10:00:00.000Z notification actually fires state=oneMinuteWarning "
                              "message=\"4 min before next lesson\""_s,
                              u"2026-11-16T10:00:00.000Z popup shown screenFrame=(0.0, 0.0, 1440.0, 900.0) "
                              "windowFrame=(245.0, 329.5, 950.0, 266.0)"_s}));
    }

    void aMessageCannotForgeALogLine()
    {
        FloatingBannerPresenterFixture f;
        TeachingAction forged = action();
        forged.message = u"Join Ben\nforged\u0085\u2066 now"_s;
        f.presenter->present(forged);
        QVERIFY(f.logger.latestLines().first().endsWith(u" message=\"Join Ben forged  now\""_s));
    }

    void thePositionIsReadAtEachPresentation()
    {
        FloatingBannerPresenterFixture f;
        f.settings.setNotificationPosition(NotificationPosition::topLeft);
        f.presenter->present(action());
        QCOMPARE(f.bannerPanels.records.back()->initialFrame, (Rect{48, 572, 1000, 280}));
    }

    void afterThePresenterIsDestroyedNothingHappens()
    {
        FloatingBannerPresenterFixture f;
        f.presenter->present(action());
        const auto record = f.bannerPanels.records.back();
        f.presenter.reset();
        record->onDismiss();
        f.clock.advance(Seconds{20});
        QCOMPARE(record->animations.size(), std::size_t{1});
    }
};

QUILLET_TEST(FloatingBannerPresenterTest, runTest<FloatingBannerPresenterTest>);
#include "FloatingBannerPresenterTest.moc"
