// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/BannerPanelMotion.h"
#include "Corvane/Platform/Linux/Banners/CardShape.h"
#include "Corvane/Platform/Linux/Toolkit/SessionMonitors.h"
#include "Corvane/Platform/Linux/X11/ReservedAreas.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;

namespace {

constexpr QSize oneMonitor(1920, 1080);
constexpr QSize sideBySide(3840, 1080);
const QRect leftMonitor(0, 0, 1920, 1080);
const QRect rightMonitor(1920, 0, 1920, 1080);

ReservedAreas with(QSize desktop, const std::vector<std::vector<std::uint32_t>> &properties)
{
    ReservedAreas areas{.desktop = desktop, .struts = {}, .workAreas = {}};
    for (const auto &property : properties) {
        if (const auto strut = Strut::fromProperty(property, desktop)) {
            areas.struts.push_back(*strut);
        }
    }
    return areas;
}

/// The strut property of a dock that reserves `thickness` pixels at `edge` (left, right, top or bottom), from
/// `from` to `to` along that edge.
std::vector<std::uint32_t> dock(std::size_t edge, std::uint32_t thickness, std::uint32_t from,
                                std::uint32_t to)
{
    std::vector<std::uint32_t> values(12);
    values[edge] = thickness;
    values[4 + 2 * edge] = from;
    values[5 + 2 * edge] = to;
    return values;
}

constexpr std::size_t left = 0;
constexpr std::size_t right = 1;
constexpr std::size_t top = 2;
constexpr std::size_t bottom = 3;

} // namespace

class X11GeometryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void monitorsOfDifferentScalesShareTheLargestOnesResolution()
    {
        const std::vector<SessionMonitor> sideways{{QPoint(0, 0), QRect(0, 0, 1280, 800)},
                                                   {QPoint(2560, 0), QRect(1280, 0, 1920, 1080)}};
        QVERIFY((shownParts(sideways) ==
                 std::vector<QRect>{QRect(0, 0, 2560, 1600), QRect(2560, 0, 3840, 2160)}));
        const std::vector<SessionMonitor> below{{QPoint(0, 1600), QRect(0, 800, 1280, 800)},
                                                {QPoint(0, 0), QRect(0, 0, 1280, 800)}};
        QVERIFY(
            (shownParts(below) == std::vector<QRect>{QRect(0, 1600, 2560, 1600), QRect(0, 0, 2560, 1600)}));
    }

    void monitorsThatAreNotEnlargedKeepTheirSize()
    {
        const std::vector<SessionMonitor> monitors{{QPoint(0, 0), QRect(0, 0, 1280, 800)},
                                                   {QPoint(1280, 200), QRect(1280, 200, 1920, 1080)}};
        QVERIFY((shownParts(monitors) ==
                 std::vector<QRect>{QRect(0, 0, 1280, 800), QRect(1280, 200, 1920, 1080)}));
    }

    void oneMonitorDoesNotTellTheScale()
    {
        QVERIFY(!shownParts({{QPoint(0, 0), QRect(0, 0, 1280, 800)}}));
        QVERIFY(!shownParts({}));
    }

    void aWorkAreaInPointsIsEnlarged_data()
    {
        QTest::addColumn<QRectF>("available");
        QTest::addColumn<QRectF>("screen");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QRectF>("visible");

        const QRectF screen(0, 0, 1280, 800);
        QTest::newRow("twice, in points")
            << QRectF(0, 0, 640, 380) << screen << 2.0 << QRectF(0, 0, 1280, 760);
        QTest::newRow("twice, bar at the top")
            << QRectF(0, 20, 640, 380) << screen << 2.0 << QRectF(0, 40, 1280, 760);
        QTest::newRow("no bar") << QRectF(0, 0, 640, 400) << screen << 2.0 << screen;
        QTest::newRow("one and a half, rounded")
            << QRectF(0, 0, 853.5, 506.5) << screen << 1.5 << QRectF(0, 0, 1280, 759.75);
        QTest::newRow("twice, in pixels")
            << QRectF(0, 0, 1280, 760) << screen << 2.0 << QRectF(0, 0, 1280, 760);
        QTest::newRow("wide bars") << QRectF(300, 0, 680, 800) << screen << 2.0 << QRectF(300, 0, 680, 800);
        QTest::newRow("once") << QRectF(0, 0, 640, 380) << screen << 1.0 << QRectF(0, 0, 640, 380);
        QTest::newRow("a second monitor")
            << QRectF(2560, 0, 640, 380) << QRectF(2560, 0, 1280, 800) << 2.0 << QRectF(2560, 0, 1280, 760);
    }

    void aWorkAreaInPointsIsEnlarged()
    {
        QFETCH(QRectF, available);
        QFETCH(QRectF, screen);
        QFETCH(double, ratio);
        QTEST(inPoints(available, screen, ratio), "visible");
    }

    void aScreenWithoutDocksIsWhollyVisible()
    {
        QCOMPARE(with(oneMonitor, {}).visiblePart(leftMonitor), leftMonitor);
    }

    void aDockAtEachEdgeTakesItsStrip()
    {
        const ReservedAreas areas = with(oneMonitor, {dock(left, 40, 0, 1079), dock(right, 50, 0, 1079),
                                                      dock(top, 28, 0, 1919), dock(bottom, 60, 0, 1919)});
        QCOMPARE(areas.visiblePart(leftMonitor), QRect(40, 28, 1920 - 90, 1080 - 88));
    }

    void anOldStrutSpansTheWholeEdge()
    {
        QCOMPARE(with(oneMonitor, {{0, 0, 30, 0}}).visiblePart(leftMonitor), QRect(0, 30, 1920, 1050));
    }

    void aDockOnOneMonitorDoesNotAffectTheOther()
    {
        const ReservedAreas areas = with(sideBySide, {dock(top, 28, 1920, 3839)});
        QCOMPARE(areas.visiblePart(leftMonitor), leftMonitor);
        QCOMPARE(areas.visiblePart(rightMonitor), QRect(1920, 28, 1920, 1052));
    }

    void aDockBetweenTwoMonitorsAffectsOnlyItsOwn()
    {
        // At the left edge of the right monitor: measured from the desktop's left edge, across the left
        // monitor.
        const ReservedAreas areas = with(sideBySide, {dock(left, 1920 + 48, 0, 1079)});
        QCOMPARE(areas.visiblePart(leftMonitor), leftMonitor);
        QCOMPARE(areas.visiblePart(rightMonitor), QRect(1968, 0, 1872, 1080));
    }

    void aDockBelowAShorterMonitorIsMeasuredFromTheDesktopsBottom()
    {
        // The left monitor is shorter than the right one, so its dock's strip starts below the monitor.
        const QSize desktop(3840, 1200);
        const QRect tall(1920, 0, 1920, 1200);
        const ReservedAreas areas = with(desktop, {dock(bottom, 120 + 30, 0, 1919)});
        QCOMPARE(areas.visiblePart(leftMonitor), QRect(0, 0, 1920, 1050));
        QCOMPARE(areas.visiblePart(tall), tall);
    }

    void aWindowManagersWorkAreasAreRespected()
    {
        ReservedAreas areas = with(sideBySide, {});
        areas.workAreas = {QRect(0, 27, 1920, 1053), QRect(1920, 0, 1920, 1080)};
        QCOMPARE(areas.visiblePart(leftMonitor), QRect(0, 27, 1920, 1053));
        QCOMPARE(areas.visiblePart(rightMonitor), rightMonitor);
    }

    void aWorkAreaOfAnotherMonitorIsIgnored()
    {
        ReservedAreas areas = with(sideBySide, {});
        areas.workAreas = {QRect(1920, 0, 1920, 1080)};
        QCOMPARE(areas.visiblePart(leftMonitor), leftMonitor);
    }

    void invalidStrutsAreIgnored_data()
    {
        QTest::addColumn<QList<uint>>("values");
        QTest::newRow("none") << QList<uint>{};
        QTest::newRow("too few") << QList<uint>{1, 2, 3};
        QTest::newRow("nothing reserved") << QList<uint>(12);
        QTest::newRow("everything reserved")
            << QList<uint>{0, 0, 4'000'000'000, 0, 0, 0, 0, 0, 0, 1919, 0, 0};
        QTest::newRow("ends before it begins") << QList<uint>{0, 0, 30, 0, 0, 0, 0, 0, 1000, 10, 0, 0};
        QTest::newRow("outside the desktop") << QList<uint>{0, 0, 30, 0, 0, 0, 0, 0, 5000, 6000, 0, 0};
    }

    void invalidStrutsAreIgnored()
    {
        QFETCH(QList<uint>, values);
        const ReservedAreas areas =
            with(oneMonitor, {std::vector<std::uint32_t>(values.begin(), values.end())});
        QCOMPARE(areas.visiblePart(leftMonitor), leftMonitor);
    }

    void aMotionBeginsAndEndsExactly()
    {
        const Rect home{100, 100, 1000, 280};
        const BannerPanelMotion motion{.begin = {home.scaledAboutCentre(0.95), 0},
                                       .animation = {Seconds{0.22}, TimingCurve::easeOut, 1, home}};
        QVERIFY((motion.at(Seconds{0}) == BannerPanelMotion::Moment{home.scaledAboutCentre(0.95), 0}));
        QVERIFY((motion.at(Seconds{0.22}) == BannerPanelMotion::Moment{home, 1}));
        QVERIFY((motion.at(Seconds{500}) == BannerPanelMotion::Moment{home, 1}));
        QVERIFY(!motion.isOver(Seconds{0.2199}));
        QVERIFY(motion.isOver(Seconds{0.22}));
    }

    void easingOutStartsFastAndEasingInStartsSlowly()
    {
        BannerPanelMotion motion{.begin = {Rect{0, 0, 100, 100}, 0},
                                 .animation = {Seconds{1}, TimingCurve::easeOut, 1, Rect{100, 0, 100, 100}}};
        QVERIFY(motion.at(Seconds{0.5}).alpha > 0.6);
        QCOMPARE(motion.at(Seconds{0.5}).frame.x, motion.at(Seconds{0.5}).alpha * 100);
        motion.animation.curve = TimingCurve::easeIn;
        QVERIFY(motion.at(Seconds{0.5}).alpha < 0.4);
    }

    void aMotionNeverReverses()
    {
        for (const TimingCurve curve : {TimingCurve::easeOut, TimingCurve::easeIn}) {
            const BannerPanelMotion motion{.begin = {Rect{}, 0}, .animation = {Seconds{1}, curve, 1, Rect{}}};
            double before = 0;
            for (int i = 0; i <= 1000; ++i) {
                const double alpha = motion.at(Seconds{i / 1000.0}).alpha;
                QVERIFY(alpha >= before && alpha <= 1);
                before = alpha;
            }
        }
    }

    void aMotionOfZeroDurationIsOverAtOnce()
    {
        const BannerPanelMotion motion{.begin = {Rect{}, 0},
                                       .animation = {Seconds{0}, TimingCurve::easeIn, 1, Rect{}}};
        QVERIFY(motion.isOver(Seconds{0}));
        QCOMPARE(motion.at(Seconds{0}).alpha, 1.0);
    }

    void roundedRowsCoverTheRectangleExceptItsCorners()
    {
        const auto rows = roundedRows(QRectF(10, 20, 100, 60), 20);
        QRegion region;
        for (const QRect &row : rows) {
            QVERIFY(!region.intersects(row));
            region += row;
        }
        QCOMPARE(region.boundingRect(), QRect(10, 20, 100, 60));
        QVERIFY(!region.contains(QPoint(10, 20)) && !region.contains(QPoint(109, 79)));
        QVERIFY(region.contains(QPoint(10, 50)) && region.contains(QPoint(60, 20)) &&
                region.contains(QPoint(16, 26)));
    }

    void aShadowIsDarkestAtTheCardsEdgeAndGoneAtTheMargins()
    {
        const CardShape shape{.cornerRadius = 40, .shadowBlur = 28, .shadowOpacity = 0.55};
        for (const double ratio : {1.0, 2.0}) {
            const QImage shadow = cardShadow(shape, {1000, 280}, ratio);
            const int margin = shape.margin();
            QCOMPARE(shadow.size(), (QSize(1000, 280) + 2 * QSize(margin, margin)) * ratio);
            const auto alpha = [&](double x, double y) {
                return shadow.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio)).alphaF();
            };
            QCOMPARE(alpha(0, 0), 0.F);
            QVERIFY(alpha(500, 0.5) < 0.02F);
            QVERIFY(alpha(500, margin - 1) > 0.2F &&
                    alpha(500, margin - 1) < 0.3F); // half the opacity at the edge
            QVERIFY(alpha(500, margin - 1) > alpha(500, margin - 10));
            QVERIFY(alpha(margin - 1, 180) > 0.2F);
            QCOMPARE(alpha(500, 180), 0.F); // nothing under the card
        }
    }

    void theShadowOfASmallCardIsComplete()
    {
        const CardShape shape{.cornerRadius = 40, .shadowBlur = 28, .shadowOpacity = 0.55};
        const QImage shadow = cardShadow(shape, {60, 50}, 1);
        QCOMPARE(shadow.size(), QSize(60, 50) + 2 * QSize(shape.margin(), shape.margin()));
    }
};

QUILLET_TEST(X11GeometryTest, runTest<X11GeometryTest>);
#include "X11GeometryTest.moc"
