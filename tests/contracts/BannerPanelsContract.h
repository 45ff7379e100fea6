// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"

#include <QTest>

namespace corvane {

/// What every kind of banner panels does. A test class derives from it and hands over the panels.
class BannerPanelsContract : public QObject {
    Q_OBJECT

protected:
    /// The panels under test, fresh for each test.
    virtual BannerPanels &panels() = 0;
    /// Presses the close button of the panel made last.
    virtual void pressCloseButton() = 0;
    /// Whether the panel made last is on the screen.
    [[nodiscard]] virtual bool isOnScreen() = 0;

    static constexpr Rect home{100, 200, 1000, 280};

    [[nodiscard]] std::shared_ptr<BannerPanel> makePanel(std::function<void()> onDismiss = [] {})
    {
        const PanelTraits traits{
            .level = 1000, .collectionBehavior = 329, .styleMask = 128, .hasShadow = true};
        TeachingAction action;
        action.state = LessonState::startNow;
        action.message = QStringLiteral("Start now");
        return panels().makePanel(home, traits, action, std::move(onDismiss));
    }

    [[nodiscard]] static PanelAnimation shrinking(Seconds duration)
    {
        return {.duration = duration,
                .curve = TimingCurve::easeIn,
                .alpha = 0,
                .frame = home.scaledAboutCentre(0.97)};
    }

private Q_SLOTS:
    void cleanupTestCase()
    {
        // The animations of panels that are gone end at their next turn; one that begins now ends after them.
        QCoro::waitFor(wait(Seconds{1.1}));
    }

    void aPanelHasTheFrameThatItWasMadeWith()
    {
        const auto panel = makePanel();
        QVERIFY(panel->frame() == home);
        panel->orderFrontRegardless();
        QVERIFY(panel->frame() == home);
    }

    void aPanelIsOnTheScreenFromItsOrderToItsClosing()
    {
        const auto panel = makePanel();
        QVERIFY(!isOnScreen());
        panel->orderFrontRegardless();
        QTRY_VERIFY(isOnScreen());
        panel->close();
        QVERIFY(!isOnScreen());
    }

    void destroyingAPanelTakesItOffTheScreen()
    {
        auto panel = makePanel();
        panel->orderFrontRegardless();
        QTRY_VERIFY(isOnScreen());
        panel.reset();
        QVERIFY(!isOnScreen());
    }

    void aFrameThatIsSetCountsAtOnce()
    {
        const auto panel = makePanel();
        panel->setFrame(home.scaledAboutCentre(0.95));
        QVERIFY(panel->frame() == home.scaledAboutCentre(0.95));
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        QVERIFY(panel->frame() == home.scaledAboutCentre(0.95));
    }

    void anAnimationBeginsWhereThePanelIsAndEndsWhereItShould()
    {
        const auto panel = makePanel();
        panel->setFrame(home.scaledAboutCentre(0.95));
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        int completions = 0;
        panel->animate({.duration = Seconds{0.1}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home},
                       [&] { ++completions; });
        QCOMPARE(completions, 0);
        QVERIFY(panel->frame() == home.scaledAboutCentre(0.95));
        QTRY_COMPARE(completions, 1);
        QVERIFY(panel->frame() == home);
    }

    void anAnimationTakesItsTime()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        const Seconds begin = uptime();
        bool isDone = false;
        panel->animate(shrinking(Seconds{0.2}), [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        QVERIFY(uptime() - begin >= Seconds{0.2});
    }

    void anAnimationWithoutACompletionEndsToo()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        panel->animate(shrinking(Seconds{0.02}), {});
        QTRY_VERIFY(panel->frame() == home.scaledAboutCentre(0.97));
    }

    void anAnimationOfNoLengthCompletesOnALaterTurn()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        int completions = 0;
        panel->animate(shrinking(Seconds{0}), [&] { ++completions; });
        QCOMPARE(completions, 0);
        QTRY_COMPARE(completions, 1);
    }

    void anAnimationThatIsReplacedEndsWhereItIs()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        panel->animate(shrinking(Seconds{1}), {});
        QCoro::waitFor(wait(Seconds{0.1}));
        const Rect reached = panel->frame();
        panel->animate(shrinking(Seconds{1}), {});
        QVERIFY(panel->frame() == reached);
    }

    void anAnimationThatIsReplacedNeverCompletes()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        bool first = false;
        bool second = false;
        panel->animate(shrinking(Seconds{0.05}), [&] { first = true; });
        panel->animate({.duration = Seconds{0.1}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home},
                       [&] { second = true; });
        QTRY_VERIFY(second);
        QVERIFY(!first);
        QVERIFY(panel->frame() == home);
    }

    void closingEndsAnAnimationWithoutItsCompletion()
    {
        const auto panel = makePanel();
        const auto other = makePanel();
        panel->orderFrontRegardless();
        other->orderFrontRegardless();
        bool isDone = false;
        bool isOtherDone = false;
        panel->animate(shrinking(Seconds{0.05}), [&] { isDone = true; });
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        panel->close();
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
    }

    void destroyingAPanelEndsItsAnimation()
    {
        auto panel = makePanel();
        const auto other = makePanel();
        panel->orderFrontRegardless();
        bool isDone = false;
        bool isOtherDone = false;
        panel->animate(shrinking(Seconds{0.05}), [&] { isDone = true; });
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        panel.reset();
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
    }

    void aPanelMayBeClosedByItsAnimationsCompletion()
    {
        auto panel = makePanel();
        panel->orderFrontRegardless();
        panel->animate(shrinking(Seconds{0.02}), [&] {
            panel->close();
            panel.reset();
        });
        QTRY_VERIFY(!panel);
    }

    void closingTwiceIsHarmless()
    {
        const auto panel = makePanel();
        panel->orderFrontRegardless();
        panel->close();
        panel->close();
    }

    void nothingAskedOfAClosedPanelHasAnEffect()
    {
        const auto panel = makePanel();
        panel->close();
        panel->setFrame(home.scaledAboutCentre(0.95));
        panel->setAlpha(0.5);
        panel->orderFrontRegardless();
        bool isDone = false;
        panel->animate(shrinking(Seconds{0.01}), [&] { isDone = true; });
        QVERIFY(!isOnScreen());
        const auto other = makePanel();
        other->orderFrontRegardless();
        bool isOtherDone = false;
        other->animate(shrinking(Seconds{0.1}), [&] { isOtherDone = true; });
        QTRY_VERIFY(isOtherDone);
        QVERIFY(!isDone);
        QVERIFY(panel->frame() == home);
    }

    void theCloseButtonTellsAndLeavesThePanelAlone()
    {
        int dismissals = 0;
        const auto panel = makePanel([&] { ++dismissals; });
        panel->orderFrontRegardless();
        pressCloseButton();
        QTRY_COMPARE(dismissals, 1);
        QVERIFY(panel->frame() == home);
    }

    void aPanelMayBeDestroyedByItsCloseButton()
    {
        std::shared_ptr<BannerPanel> panel;
        panel = makePanel([&] { panel.reset(); });
        panel->orderFrontRegardless();
        pressCloseButton();
        QTRY_VERIFY(!panel);
    }

    void severalPanelsAreIndependent()
    {
        const auto first = makePanel();
        const auto second = makePanel();
        first->orderFrontRegardless();
        second->orderFrontRegardless();
        first->setFrame(home.scaledAboutCentre(0.95));
        first->close();
        QVERIFY(second->frame() == home);
    }
};

} // namespace corvane
