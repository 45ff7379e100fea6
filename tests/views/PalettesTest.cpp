// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Palettes.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Style.h"
#include "tests/support/Pictures.h"

#include <QLabel>
#include <QTest>

using namespace corvane;
using namespace corvane::look;
using Scheme = Appearance::Scheme;

namespace {

QPalette desktopPalette(const QColor &window)
{
    QPalette palette{window, window};
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    return palette;
}

const QPalette light = desktopPalette(QColor(239, 240, 241));
const QPalette dark = desktopPalette(QColor(32, 35, 38));

} // namespace

class PalettesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPaletteThatMatchesTheSchemeStays()
    {
        QCOMPARE(withAppearance(light, {}), light);
        QCOMPARE(withAppearance(dark, {}), dark);
        QCOMPARE(withAppearance(light, {.scheme = Scheme::light}), light);
        QCOMPARE(withAppearance(dark, {.scheme = Scheme::dark}), dark);
    }

    void aMismatchedPaletteIsReplacedButKeepsItsAccent()
    {
        const QPalette darkened = withAppearance(light, {.scheme = Scheme::dark});
        QVERIFY(isDark(darkened));
        QCOMPARE(darkened.color(QPalette::Highlight), light.color(QPalette::Highlight));
        QVERIFY(!isDark(withAppearance(dark, {.scheme = Scheme::light})));
    }

    void theDesktopsAccentIsUsed()
    {
        const QPalette palette = withAppearance(light, {.accent = Appearance::Accent{1, 0.5, 0}});
        QCOMPARE(palette.color(QPalette::Active, QPalette::Highlight).rgb(), qRgb(255, 128, 0));
        QCOMPARE(palette.color(QPalette::Inactive, QPalette::Highlight).rgb(), qRgb(255, 128, 0));
    }

    void anOpenWindowFollowsTheDesktopToDarkAndBack()
    {
        auto *style = new Style;
        QApplication::setStyle(style);
        QApplication::setPalette(QPalette());
        QLabel window(QStringLiteral("Quillet"));
        window.show();
        QVERIFY(!isDark(window.palette()));
        style->follow({.scheme = Scheme::dark, .accent = Appearance::Accent{0.9, 0.2, 0.3}});
        QTRY_VERIFY(isDark(window.palette()));
        const QColor accent = window.palette().color(QPalette::Highlight);
        QVERIFY(accent.red() > 2 * accent.blue());
        style->follow({});
        QTRY_VERIFY(!isDark(window.palette()));
    }

    void reducedMotionDisablesAnimations()
    {
        Style style;
        QVERIFY(style.styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, nullptr, nullptr) > 0);
        style.follow({.reducesMotion = true});
        QCOMPARE(style.styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, nullptr, nullptr), 0);
    }
};

QUILLET_TEST(PalettesTest, runViewTest<PalettesTest>);

#include "PalettesTest.moc"
