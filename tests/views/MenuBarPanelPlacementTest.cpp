// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanelPlacement.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Size size{320, 400};
constexpr double gap = MenuBarPanelPlacement::gap;

// The thickness of the docks on a screen's edges, in points.
struct Kept {
    double top = 0;
    double bottom = 0;
    double left = 0;
    double right = 0;
};

Screen screen(Kept kept, Rect frame = {0, 0, 1440, 900})
{
    return {.name = u"A"_s,
            .frame = frame,
            .visibleFrame = {frame.x + kept.left, frame.y + kept.bottom, frame.width - kept.left - kept.right,
                             frame.height - kept.top - kept.bottom}};
}

Rect frame(std::optional<Point> item, const Screen &on, Size wanted = size)
{
    return MenuBarPanelPlacement::find(wanted, item, {on}, on).frame;
}

} // namespace

Q_DECLARE_METATYPE(Kept)
Q_DECLARE_METATYPE(std::optional<Point>)

class MenuBarPanelPlacementTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aMenuBarPanelIsPlacedAtTheBell_data()
    {
        QTest::addColumn<Kept>("kept");
        QTest::addColumn<Point>("item");
        QTest::addColumn<Rect>("expected");
        QTest::newRow("below a dock at the top")
            << Kept{.top = 30} << Point{800, 885} << Rect{640, 870 - gap - 400, 320, 400};
        QTest::newRow("above a dock at the bottom")
            << Kept{.bottom = 40} << Point{800, 20} << Rect{640, 40 + gap, 320, 400};
        QTest::newRow("right of a dock on the left")
            << Kept{.left = 48} << Point{24, 500} << Rect{48 + gap, 300, 320, 400};
        QTest::newRow("left of a dock on the right")
            << Kept{.right = 48} << Point{1420, 500} << Rect{1392 - gap - 320, 300, 320, 400};
        QTest::newRow("not beyond the right edge")
            << Kept{.top = 30} << Point{1430, 885} << Rect{1440 - gap - 320, 870 - gap - 400, 320, 400};
        QTest::newRow("not beyond the left edge")
            << Kept{.bottom = 30} << Point{5, 15} << Rect{gap, 30 + gap, 320, 400};
        QTest::newRow("not beyond the lower edge")
            << Kept{.left = 48} << Point{24, 10} << Rect{48 + gap, gap, 320, 400};
        QTest::newRow("not beyond the upper edge")
            << Kept{.right = 48} << Point{1420, 899} << Rect{1392 - gap - 320, 900 - gap - 400, 320, 400};
        QTest::newRow("between two docks, at the clicked one")
            << Kept{.top = 30, .bottom = 30} << Point{720, 10} << Rect{560, 30 + gap, 320, 400};
        QTest::newRow("in the corner of two docks, at the thinner one")
            << Kept{.bottom = 60, .left = 30} << Point{15, 5} << Rect{30 + gap, 60 + gap, 320, 400};
        QTest::newRow("clear of an auto-hiding dock at the top")
            << Kept{} << Point{800, 890} << Rect{640, 890 - MenuBarPanelPlacement::clearance - 400, 320, 400};
        QTest::newRow("clear of an auto-hiding dock at the bottom")
            << Kept{} << Point{800, 12} << Rect{640, 12 + MenuBarPanelPlacement::clearance, 320, 400};
    }

    void aMenuBarPanelIsPlacedAtTheBell()
    {
        QFETCH(Kept, kept);
        QFETCH(Point, item);
        QFETCH(Rect, expected);
        const Rect placed = frame(item, screen(kept));
        QVERIFY2(
            placed == expected,
            qPrintable(u"%1 %2 %3 %4"_s.arg(placed.x).arg(placed.y).arg(placed.width).arg(placed.height)));
    }

    void withoutTheBellsPlaceTheMenuBarPanelIsInACorner_data()
    {
        QTest::addColumn<Kept>("kept");
        QTest::addColumn<Rect>("expected");
        const double right = 1440 - gap - 320;
        QTest::newRow("a dock at the top") << Kept{.top = 30} << Rect{right, 870 - gap - 400, 320, 400};
        QTest::newRow("a dock at the bottom") << Kept{.bottom = 40} << Rect{right, 40 + gap, 320, 400};
        QTest::newRow("a bar at the top and a dock at the bottom")
            << Kept{.top = 28, .bottom = 28} << Rect{right, 872 - gap - 400, 320, 400};
        QTest::newRow("a bar at the top and a dock on the left")
            << Kept{.top = 28, .left = 64} << Rect{right, 872 - gap - 400, 320, 400};
        QTest::newRow("a dock on the left") << Kept{.left = 48} << Rect{48 + gap, gap, 320, 400};
        QTest::newRow("a dock on the right") << Kept{.right = 48} << Rect{1392 - gap - 320, gap, 320, 400};
        QTest::newRow("none") << Kept{} << Rect{right, 900 - gap - 400, 320, 400};
    }

    void withoutTheBellsPlaceTheMenuBarPanelIsInACorner()
    {
        QFETCH(Kept, kept);
        QFETCH(Rect, expected);
        QVERIFY(frame(std::nullopt, screen(kept)) == expected);
    }

    void onTwoMonitorsTheMenuBarPanelIsOnTheBellsMonitor()
    {
        const Screen first = screen({.top = 30});
        const Screen second = screen({.bottom = 40}, {1440, -300, 1920, 1200});
        const auto at = [&](Point item) {
            return MenuBarPanelPlacement::find(size, item, {first, second}, first).frame;
        };
        QVERIFY((at({1400, 885}) == Rect{1440 - gap - 320, 870 - gap - 400, 320, 400}));
        QVERIFY((at({1445, -290}) == Rect{1440 + gap, -260 + gap, 320, 400}));
        // A point outside all screens belongs to the nearest.
        QVERIFY((at({4000, -290}) == Rect{3360 - gap - 320, -260 + gap, 320, 400}));
    }

    void onASmallScreenTheMenuBarPanelShrinks()
    {
        const Screen small = screen({.top = 30}, {0, 0, 640, 360});
        QVERIFY((frame(Point{600, 350}, small) == Rect{640 - gap - 320, gap, 320, 330 - 2 * gap}));
        const Screen tiny = screen({}, {0, 0, 200, 100});
        QVERIFY((frame(Point{100, 95}, tiny) == Rect{gap, gap, 200 - 2 * gap, 100 - 2 * gap}));
    }

    // At 200 % a dock may have an odd number of pixels, that is half points.
    void atTwiceTheScaleItIsPlacedOnWholePoints()
    {
        const Screen dense = screen({.top = 27.5}, {0, 0, 1280, 720});
        const Rect placed = frame(Point{1000.5, 700.25}, dense, {320, 333.5});
        QVERIFY((placed == Rect{841, 352, 320, 334}));
        QVERIFY(placed.maxY() <= 720 - 27.5 - gap);
    }

    void theMenuBarPanelIsAlwaysWithinTheVisibleFrame()
    {
        for (const Kept &kept : {Kept{.top = 30}, Kept{.bottom = 61.5}, Kept{.left = 48, .right = 17}}) {
            for (const Rect &whole :
                 {Rect{0, 0, 1440, 900}, Rect{-1024, 100, 1024, 768}, Rect{0, 0, 800, 480}}) {
                const Screen on = screen(kept, whole);
                // Quarters of a point.
                for (int x = -400; x < 4 * (whole.width + 100); x += 150) {
                    for (int y = -400; y < 4 * (whole.height + 100); y += 165) {
                        const Point click{whole.minX() + x / 4.0, whole.minY() + y / 4.0};
                        const MenuBarPanelPlacement place =
                            MenuBarPanelPlacement::find(size, click, {on}, on);
                        QVERIFY(place.visible == on.visibleFrame);
                        QVERIFY(place.frame.minX() >= place.visible.minX() + gap);
                        QVERIFY(place.frame.maxX() <= place.visible.maxX() - gap);
                        QVERIFY(place.frame.minY() >= place.visible.minY() + gap);
                        QVERIFY(place.frame.maxY() <= place.visible.maxY() - gap);
                    }
                }
            }
        }
    }

    void withoutAScreenThereIsStillAPlace()
    {
        const Rect placed = MenuBarPanelPlacement::find(size, Point{10, 10}, {}, {}).frame;
        QVERIFY(placed.width >= 1 && placed.height >= 1);
    }
};

QUILLET_TEST(MenuBarPanelPlacementTest, runTest<MenuBarPanelPlacementTest>);
#include "MenuBarPanelPlacementTest.moc"
