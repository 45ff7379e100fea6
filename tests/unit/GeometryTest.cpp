// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Geometry.h"
#include "Corvane/Utilities/DesktopPoints.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;

class GeometryTest final : public QObject {
    Q_OBJECT

    static constexpr double zeroLine = 1080; ///< the lower edge of a screen of 1920 x 1080
    static constexpr Rect card{100, 40, 460, 120};

private Q_SLOTS:
    void aRectangleInPointsStandsOnTheLowerEdge()
    {
        const QRectF desktop(100, 920, 460, 120);
        QCOMPARE(pointsUp(desktop, zeroLine), card);
        QCOMPARE(desktopRect(card, zeroLine), desktop);
    }

    void aScreenAbovePrimaryHasLargerOrdinates()
    {
        QCOMPARE(pointsUp(QRectF(0, -600, 800, 600), zeroLine), (Rect{0, 1080, 800, 600}));
        QCOMPARE(pointsUp(QPointF(7, -600), zeroLine), (Point{7, 1680}));
    }

    void edgesAndMiddlesFollowFromTheLowerLeftCorner()
    {
        QCOMPARE(card.minX(), 100.0);
        QCOMPARE(card.midX(), 330.0);
        QCOMPARE(card.maxX(), 560.0);
        QCOMPARE(card.minY(), 40.0);
        QCOMPARE(card.midY(), 100.0);
        QCOMPARE(card.maxY(), 160.0);
    }

    void theLeftAndLowerEdgesAreInsideTheOthersAreNot()
    {
        QVERIFY(card.contains({100, 40}) && card.contains({559.5, 159.5}));
        QVERIFY(!card.contains({99.5, 40}) && !card.contains({100, 39.5}));
        QVERIFY(!card.contains({560, 40}) && !card.contains({100, 160}));
    }

    void scalingKeepsTheCentre() { QCOMPARE(card.scaledAboutCentre(0.5), (Rect{215, 70, 230, 60})); }
};

QUILLET_TEST(GeometryTest, runTest<GeometryTest>);
#include "GeometryTest.moc"
