// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/contracts/ShownBannersFixture.h"

#include <QElapsedTimer>

namespace corvane {

/// What banners must do on a screen, on any window system.
class ShownBannersContract : public ShownBannersFixture {
    Q_OBJECT

private Q_SLOTS:
    void keyPressesStayWithTheOpponent_data() { addRows(surroundings()); }

    void keyPressesStayWithTheOpponent()
    {
        enter();
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        click(onTheCard);
        press(QStringLiteral("a"));
        QTRY_VERIFY(heard().contains(QStringLiteral("key 65")));
        QVERIFY(!heard().contains(QStringLiteral("click")));
        QCOMPARE(QGuiApplication::focusWindow(), nullptr);
    }

    void aClickOnTheMarginFallsThrough_data() { addRows(compositedSurroundings()); }

    void aClickOnTheMarginFallsThrough()
    {
        enter();
        bool isDismissed = false;
        const auto bannerPanel = present([&] { isDismissed = true; });
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(onTheMargin).lightness() < opponentColor().lightness()); // the shadow
        for (const QPoint at : {onTheMargin, inTheCorner}) {
            click(at);
            QTRY_VERIFY(heard().contains(QStringLiteral("click %1 %2\n").arg(at.x()).arg(at.y())));
        }
        QVERIFY(!isDismissed);
    }

    void aBannerFadesOutAndIsGone_data() { addRows(surroundings()); }

    void aBannerFadesOutAndIsGone()
    {
        enter();
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(bannerPanel->frame() == home);
        bannerPanel->animate({.duration = Seconds{0.24},
                              .curve = TimingCurve::easeIn,
                              .alpha = 0,
                              .frame = home.scaledAboutCentre(0.97)},
                             [&] { bannerPanel->close(); });
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
        QTRY_COMPARE(pixel(onTheMargin), opponentColor());
    }

    void aClosedBannerIsGoneAtOnce_data() { addRows(compositedSurroundings()); }

    void aClosedBannerIsGoneAtOnce()
    {
        enter();
        auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        bannerPanel->close();
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
    }

    void aLockedSessionHidesTheBannerAndUnlockingBringsItBack_data() { addRows(surroundings()); }

    void aLockedSessionHidesTheBannerAndUnlockingBringsItBack()
    {
        enter();
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        bannerPanels().setSessionLocked(true);
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
        QVERIFY(bannerPanel->frame() == home || bannerPanel->frame().width < home.width);
        bannerPanels().setSessionLocked(false);
        QTRY_VERIFY(isDark(onTheCard));
        QTRY_VERIFY(pixel(inTheCorner).lightness() > 100); // rounded or shadowed as before
    }

    void animationsGoOnWhileTheSessionIsLocked_data() { addRows(surroundings().first(1)); }

    void animationsGoOnWhileTheSessionIsLocked()
    {
        enter();
        bannerPanels().setSessionLocked(true);
        const auto bannerPanel = present();
        bool isDone = false;
        QTRY_VERIFY(bannerPanel->frame() == home);
        bannerPanel->animate(
            {.duration = Seconds{0.05}, .curve = TimingCurve::easeIn, .alpha = 1, .frame = home},
            [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        QCOMPARE(pixel(onTheCard), opponentColor());
        bannerPanels().setSessionLocked(false);
        QTRY_VERIFY(isDark(onTheCard));
    }

    void anAnimationEndsAtOnceWhenMotionIsOff_data() { addRows(surroundings().first(1)); }

    void anAnimationEndsAtOnceWhenMotionIsOff()
    {
        enter();
        bannerPanels().setMoves(false);
        const auto bannerPanel = present();
        const Rect smaller{home.x + 100, home.y + 50, home.width - 200, home.height - 100};
        bool isDone = false;
        QElapsedTimer sinceBegin;
        sinceBegin.start();
        bannerPanel->animate(
            {.duration = Seconds{30}, .curve = TimingCurve::easeIn, .alpha = 1, .frame = smaller},
            [&] { isDone = true; });
        QTRY_VERIFY(isDone);
        QCOMPARE(bannerPanel->frame(), smaller);
        QVERIFY(sinceBegin.elapsed() < 5000);
        bannerPanels().setMoves(true);
    }

    void aBannerClosedWhileTheSessionIsLockedDoesNotComeBack_data() { addRows(surroundings().first(1)); }

    void aBannerClosedWhileTheSessionIsLockedDoesNotComeBack()
    {
        enter();
        const auto bannerPanel = present();
        QTRY_VERIFY(isDark(onTheCard));
        bannerPanels().setSessionLocked(true);
        QTRY_COMPARE(pixel(onTheCard), opponentColor());
        bannerPanel->close();
        const auto later = bannerPanels().makeBannerPanel(home, {}, startNow(), {}); // never ordered front
        bannerPanels().setSessionLocked(false);
        QCoreApplication::processEvents();
        point(QPoint(5, 5)); // a round trip to the server: a mapped banner would be visible now
        QCOMPARE(pixel(onTheCard), opponentColor());
    }
};

} // namespace corvane
