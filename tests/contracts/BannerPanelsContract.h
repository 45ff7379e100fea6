// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"

#include <QTest>

namespace corvane {

/// What every implementation of BannerPanels must do. A test class derives from it and provides the banner
/// panels.
class BannerPanelsContract : public QObject {
    Q_OBJECT

protected:
    /// The banner panels under test, fresh for each test.
    virtual BannerPanels &bannerPanels() = 0;
    /// Presses the close button of the most recent banner panel.
    virtual void pressCloseButton() = 0;
    /// Whether the most recent banner panel is on the screen.
    [[nodiscard]] virtual bool isOnScreen() = 0;

    static constexpr Rect home{100, 200, 1000, 280};

    [[nodiscard]] std::shared_ptr<BannerPanel> makeBannerPanel(std::function<void()> onDismiss = [] {})
    {
        const BannerPanelTraits traits{
            .level = 1000, .collectionBehavior = 329, .styleMask = 128, .hasShadow = true};
        TeachingAction action;
        action.state = LessonState::startNow;
        action.message = QStringLiteral("Start now");
        return bannerPanels().makeBannerPanel(home, traits, action, std::move(onDismiss));
    }

    [[nodiscard]] static BannerPanelAnimation shrinking(Seconds duration)
    {
        return {.duration = duration,
                .curve = TimingCurve::easeIn,
                .alpha = 0,
                .frame = home.scaledAboutCentre(0.97)};
    }

private Q_SLOTS:
    void cleanupTestCase()
    {
        // Wait longer than any animation above, so that the animations of destroyed banner panels have ended.
        QCoro::waitFor(wait(Seconds{1.1}));
    }

    void aBannerPanelHasTheFrameThatItWasMadeWith()
    {
        const auto bannerPanel = makeBannerPanel();
        QVERIFY(bannerPanel->frame() == home);
        bannerPanel->orderFrontRegardless();
        QVERIFY(bannerPanel->frame() == home);
    }

    void aBannerPanelIsOnTheScreenFromOrderFrontUntilClose()
    {
        const auto bannerPanel = makeBannerPanel();
        QVERIFY(!isOnScreen());
        bannerPanel->orderFrontRegardless();
        QTRY_VERIFY(isOnScreen());
        bannerPanel->close();
        QVERIFY(!isOnScreen());
    }

    void destroyingABannerPanelTakesItOffTheScreen()
    {
        auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        QTRY_VERIFY(isOnScreen());
        bannerPanel.reset();
        QVERIFY(!isOnScreen());
    }

    void settingTheFrameTakesEffectAtOnce()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        QVERIFY(bannerPanel->frame() == home.scaledAboutCentre(0.95));
        bannerPanel->setAlpha(0);
        bannerPanel->orderFrontRegardless();
        QVERIFY(bannerPanel->frame() == home.scaledAboutCentre(0.95));
    }

    void anAnimationRunsFromTheCurrentFrameToItsTarget()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        bannerPanel->setAlpha(0);
        bannerPanel->orderFrontRegardless();
        int completions = 0;
        bannerPanel->animate(
            {.duration = Seconds{0.1}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home},
            [&] { ++completions; });
        QCOMPARE(completions, 0);
        QVERIFY(bannerPanel->frame() == home.scaledAboutCentre(0.95));
        QTRY_COMPARE(completions, 1);
        QVERIFY(bannerPanel->frame() == home);
    }

    void anAnimationLastsForItsDuration()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        const Seconds begin = uptime();
        bool isDone = false;
        bannerPanel->animate(shrinking(Seconds{0.2}), [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        QVERIFY(uptime() - begin >= Seconds{0.2});
    }

    void anAnimationWithoutACompletionEndsToo()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bannerPanel->animate(shrinking(Seconds{0.02}), {});
        QTRY_VERIFY(bannerPanel->frame() == home.scaledAboutCentre(0.97));
    }

    void anAnimationOfZeroDurationCompletesOnALaterTurn()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        int completions = 0;
        bannerPanel->animate(shrinking(Seconds{0}), [&] { ++completions; });
        QCOMPARE(completions, 0);
        QTRY_COMPARE(completions, 1);
    }

    void aReplacedAnimationStopsWhereItIs()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bannerPanel->animate(shrinking(Seconds{1}), {});
        QCoro::waitFor(wait(Seconds{0.1}));
        const Rect reached = bannerPanel->frame();
        bannerPanel->animate(shrinking(Seconds{1}), {});
        QVERIFY(bannerPanel->frame() == reached);
    }

    void aReplacedAnimationNeverCompletes()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bool first = false;
        bool second = false;
        bannerPanel->animate(shrinking(Seconds{0.05}), [&] { first = true; });
        bannerPanel->animate(
            {.duration = Seconds{0.1}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home},
            [&] { second = true; });
        QTRY_VERIFY(second);
        QVERIFY(!first);
        QVERIFY(bannerPanel->frame() == home);
    }

    void closingEndsAnAnimationWithoutCompletingIt()
    {
        const auto bannerPanel = makeBannerPanel();
        const auto other = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        other->orderFrontRegardless();
        bool isDone = false;
        bool isOtherDone = false;
        bannerPanel->animate(shrinking(Seconds{0.05}), [&] { isDone = true; });
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        bannerPanel->close();
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
    }

    void destroyingABannerPanelEndsItsAnimation()
    {
        auto bannerPanel = makeBannerPanel();
        const auto other = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bool isDone = false;
        bool isOtherDone = false;
        bannerPanel->animate(shrinking(Seconds{0.05}), [&] { isDone = true; });
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        bannerPanel.reset();
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
    }

    void anAnimationsCompletionMayCloseItsBannerPanel()
    {
        auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bannerPanel->animate(shrinking(Seconds{0.02}), [&] {
            bannerPanel->close();
            bannerPanel.reset();
        });
        QTRY_VERIFY(!bannerPanel);
    }

    void closingTwiceIsHarmless()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->orderFrontRegardless();
        bannerPanel->close();
        bannerPanel->close();
    }

    void callsToAClosedBannerPanelHaveNoEffect()
    {
        const auto bannerPanel = makeBannerPanel();
        bannerPanel->close();
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        bannerPanel->setAlpha(0.5);
        bannerPanel->orderFrontRegardless();
        bool isDone = false;
        bannerPanel->animate(shrinking(Seconds{0.01}), [&] { isDone = true; });
        QVERIFY(!isOnScreen());
        const auto other = makeBannerPanel();
        other->orderFrontRegardless();
        bool isOtherDone = false;
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
        QVERIFY(bannerPanel->frame() == home);
    }

    void theCloseButtonCallsBackAndLeavesTheBannerPanelOpen()
    {
        int dismissals = 0;
        const auto bannerPanel = makeBannerPanel([&] { ++dismissals; });
        bannerPanel->orderFrontRegardless();
        pressCloseButton();
        QTRY_COMPARE(dismissals, 1);
        QVERIFY(bannerPanel->frame() == home);
    }

    void theCloseButtonsCallbackMayDestroyTheBannerPanel()
    {
        std::shared_ptr<BannerPanel> bannerPanel;
        bannerPanel = makeBannerPanel([&] { bannerPanel.reset(); });
        bannerPanel->orderFrontRegardless();
        pressCloseButton();
        QTRY_VERIFY(!bannerPanel);
    }

    void severalBannerPanelsAreIndependent()
    {
        const auto first = makeBannerPanel();
        const auto second = makeBannerPanel();
        first->orderFrontRegardless();
        second->orderFrontRegardless();
        first->setFrame(home.scaledAboutCentre(0.95));
        first->close();
        QVERIFY(second->frame() == home);
    }
};

} // namespace corvane
