// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/PageSlide.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Look/SymbolTurn.h"
#include "Corvane/Views/PageIndicator.h"
#include "tests/support/Pictures.h"

#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace corvane;
using namespace corvane::look;
using namespace Qt::StringLiterals;

namespace {

void wantNoMotion()
{
    qobject_cast<Style *>(QApplication::style())->follow({.reducesMotion = true});
}

QImage grabbed(QWidget &widget)
{
    return widget.grab().toImage();
}

/// Counts a widget's paint events.
class Paints final : public QObject {
public:
    explicit Paints(QWidget &widget) { widget.installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// An area that shows one of two pages.
struct Pages {
    Pages()
    {
        area.resize(200, 60);
        first.resize(area.size());
        second.resize(area.size());
        second.hide();
    }

    void slide(bool isForward = true)
    {
        slidePage(area, isForward, [this] {
            first.setHidden(!first.isHidden());
            second.setHidden(!second.isHidden());
        });
    }

    [[nodiscard]] qsizetype parts() const
    {
        return area.findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size();
    }

    QWidget area;
    QLabel first{u"first"_s, &area};
    QLabel second{u"second"_s, &area};
};

} // namespace

class MotionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void aPageSlidesToTheNextAndLeavesNothingBehind()
    {
        Pages pages;
        pages.area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&pages.area));
        const QImage first = grabbed(pages.area);
        pages.slide();
        QVERIFY(pages.second.isVisible()); // at once
        QCOMPARE(pages.parts(), 3);
        const QImage between = grabbed(pages.area);
        QTRY_COMPARE(pages.parts(), 2);
        const QImage second = grabbed(pages.area);
        QVERIFY(second != first && between != second);
        pages.slide(false);
        pages.slide(); // a new slide replaces a running one
        QCOMPARE(pages.parts(), 3);
        QTRY_COMPARE(pages.parts(), 2);
        QCOMPARE(grabbed(pages.area), second);
        const Paints paints(pages.area);
        QTest::qWait(100);
        QCOMPARE(paints.count, 0);
    }

    void aPageAppearsAtOnceWhileHiddenOrWithoutMotion()
    {
        Pages hidden;
        hidden.slide();
        QCOMPARE(hidden.parts(), 2);
        QVERIFY(hidden.first.isHidden());
        wantNoMotion();
        Pages shown;
        shown.area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shown.area));
        shown.slide();
        QCOMPARE(shown.parts(), 2);
        QVERIFY(shown.first.isHidden());
    }

    void aSymbolTurnsUntilItsWorkIsDone()
    {
        QWidget window;
        auto *button = pushButton(u"Reload"_s, Role::bordered, u"arrow.clockwise"_s);
        window.setLayout(row(0, {button}));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage still = grabbed(*button);
        SymbolTurn turn(*button);
        turn.begin();
        turn.begin();
        QTRY_VERIFY(SymbolTurn::degrees(button) > 20);
        QVERIFY(grabbed(*button) != still);
        turn.end(); // one of two began
        QTRY_VERIFY(SymbolTurn::degrees(button) > 180);
        QTRY_VERIFY(SymbolTurn::degrees(button) < 180);
        QCOMPARE(turn.state(), QVariantAnimation::Running);
        turn.end();
        QTRY_VERIFY(turn.state() == QVariantAnimation::Stopped);
        QCOMPARE(grabbed(*button), still);
        const Paints paints(*button);
        QTest::qWait(100);
        QCOMPARE(paints.count, 0);
    }

    void aSymbolTurnsOnlyWhileVisibleAndWithMotion()
    {
        QWidget window;
        auto *button = pushButton(u"Reload"_s, Role::bordered, u"arrow.clockwise"_s);
        window.setLayout(row(0, {button}));
        SymbolTurn turn(*button);
        turn.begin();
        QCOMPARE(turn.state(), QVariantAnimation::Stopped);
        window.show();
        QCOMPARE(turn.state(), QVariantAnimation::Running);
        window.hide();
        QCOMPARE(turn.state(), QVariantAnimation::Stopped);
        wantNoMotion();
        window.show();
        QCOMPARE(turn.state(), QVariantAnimation::Stopped);
    }

    void theIndicatorGlidesToThePage()
    {
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            PageIndicator still(5);
            still.setLayoutDirection(direction);
            still.setPage(3);
            const QImage end = grabbed(still);
            const int middle = direction == Qt::LeftToRight ? 61 : 29; // of the long capsule
            QCOMPARE(end.pixelColor(middle, 4), color(Ink::accent, still.palette()));
            PageIndicator indicator(5);
            indicator.setLayoutDirection(direction);
            indicator.show();
            QVERIFY(QTest::qWaitForWindowExposed(&indicator));
            indicator.setPage(3);
            QVERIFY(grabbed(indicator) != end);
            QTRY_VERIFY(grabbed(indicator) == end);
            QTest::qWait(setup::slideDuration); // the last steps look the same
            const Paints paints(indicator);
            QTest::qWait(100);
            QCOMPARE(paints.count, 0);
        }
    }

    void theIndicatorJumpsWithoutMotion()
    {
        wantNoMotion();
        PageIndicator still(5);
        still.setPage(3);
        PageIndicator indicator(5);
        indicator.show();
        QVERIFY(QTest::qWaitForWindowExposed(&indicator));
        indicator.setPage(3);
        QCOMPARE(grabbed(indicator), grabbed(still));
    }
};

QUILLET_TEST(MotionTest, runViewTest<MotionTest>);

#include "MotionTest.moc"
