// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Contrast.h"
#include "Corvane/Look/Look.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <array>
#include <cmath>

using namespace corvane;
using namespace corvane::look;
using namespace Qt::StringLiterals;

namespace {

struct Desktop {
    const char *name;
    const char *window;
    const char *text;
    const char *base;
    const char *highlight;
};

/// Colours that Qt takes from these themes.
constexpr std::array desktops{
    Desktop{"fusion light", "#efefef", "#000000", "#ffffff", "#308cc6"},
    Desktop{"fusion dark", "#323232", "#ffffff", "#242424", "#308cc6"},
    Desktop{"breeze light", "#eff0f1", "#232629", "#ffffff", "#3daee9"},
    Desktop{"breeze dark", "#202326", "#fcfcfc", "#141618", "#3daee9"},
    Desktop{"adwaita light", "#f6f5f4", "#2e3436", "#ffffff", "#3584e4"},
    Desktop{"adwaita dark", "#353535", "#eeeeec", "#2d2d2d", "#15539e"},
};

QPalette paletteOf(const Desktop &desktop)
{
    QPalette palette{QColor(desktop.window)};
    palette.setColor(QPalette::Window, QColor(desktop.window));
    palette.setColor(QPalette::WindowText, QColor(desktop.text));
    palette.setColor(QPalette::Base, QColor(desktop.base));
    palette.setColor(QPalette::Text, QColor(desktop.text));
    palette.setColor(QPalette::Highlight, QColor(desktop.highlight));
    return palette;
}

/// A foreground and its background, named by where they are used, and the least contrast between them.
struct Pair {
    QString name;
    QColor seen;
    QColor ground;
    double least;
};

QColor tint(Ink ink, const QPalette &palette, double opacity)
{
    return over(color(ink, palette, opacity), palette.color(QPalette::Window));
}

QList<Pair> pairs(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor card = cardColor(palette);
    const QColor field = fieldColor(palette);
    QList<Pair> pairs{
        {u"badge NEXT on its row"_s, color(Ink::red, palette), tint(Ink::red, palette, 0.08), textContrast},
        {u"badge IN PROGRESS on its row"_s, color(Ink::green, palette), tint(Ink::green, palette, 0.12),
         textContrast},
        {u"platform on a row that is over"_s, color(Ink::secondary, palette),
         tint(Ink::secondary, palette, 0.06), textContrast},
        {u"placeholder on its field"_s, placeholderColor(palette), field, textContrast},
        {u"text in a field"_s, palette.color(QPalette::Text), field, textContrast},
        {u"text of a prominent button"_s, color(Ink::onAccent, palette), accentGround(palette), textContrast},
        {u"knob on a switch that is off"_s, Qt::white, edgeColor(palette), symbolContrast},
        {u"knob on a switch that is on"_s, Qt::white, accentEdge(palette), symbolContrast},
        {u"edge of a field"_s, edgeColor(palette), field, symbolContrast}};
    for (const auto &[place, ground] : {std::pair(u"window"_s, window), std::pair(u"card"_s, card)}) {
        for (const auto &[name, ink] :
             {std::pair(u"text"_s, Ink::primary), std::pair(u"secondary text"_s, Ink::secondary),
              std::pair(u"accent"_s, Ink::accent), std::pair(u"red"_s, Ink::red),
              std::pair(u"green"_s, Ink::green), std::pair(u"orange"_s, Ink::orange),
              std::pair(u"blue"_s, Ink::blue)}) {
            pairs.push_back({name + u" on "_s + place, color(ink, palette), ground, textContrast});
        }
        pairs.push_back({u"text of a control that is disabled, on "_s + place,
                         over(color(Ink::primary, palette, control::disabledOpacity), ground), ground,
                         symbolContrast});
        pairs.push_back({u"edge of a control on "_s + place, edgeColor(palette), ground, symbolContrast});
        pairs.push_back(
            {u"edge of what leads on, on "_s + place, accentEdge(palette), ground, symbolContrast});
    }
    return pairs;
}

} // namespace

class ColorsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyPairHasEnoughContrast_data()
    {
        QTest::addColumn<QPalette>("palette");
        for (const Desktop &desktop : desktops) {
            QTest::newRow(desktop.name) << paletteOf(desktop);
        }
    }

    void everyPairHasEnoughContrast()
    {
        QFETCH(QPalette, palette);
        QStringList tooClose;
        for (const Pair &pair : pairs(palette)) {
            if (contrast(pair.seen, pair.ground) < pair.least) {
                tooClose << u"%1: %2 on %3 is %4"_s.arg(pair.name, pair.seen.name(), pair.ground.name())
                                .arg(contrast(pair.seen, pair.ground));
            }
        }
        QCOMPARE(tooClose.join(u'\n'), QString());
    }

    void theAccentKeepsItsHueAndSaturation_data() { everyPairHasEnoughContrast_data(); }

    void theAccentKeepsItsHueAndSaturation()
    {
        QFETCH(QPalette, palette);
        const QColor desktops = palette.color(QPalette::Highlight);
        for (const QColor &accent :
             {color(Ink::accent, palette), accentGround(palette), accentEdge(palette)}) {
            QVERIFY(std::abs(accent.hslHue() - desktops.hslHue()) <= 3);
            QVERIFY(std::abs(accent.hslSaturationF() - desktops.hslSaturationF()) <= 0.05);
        }
    }

    void aLegibleAccentIsUsedUnchanged()
    {
        QPalette palette = paletteOf(desktops.front());
        palette.setColor(QPalette::Highlight, QColor(u"#104a8e"_s));
        QCOMPARE(color(Ink::accent, palette), QColor(u"#104a8e"_s));
        QCOMPARE(accentGround(palette), QColor(u"#104a8e"_s));
    }

    void contrastIsTheRatioOfLuminances()
    {
        QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
        QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
        QCOMPARE(contrast(QColor(10, 20, 30), QColor(10, 20, 30)), 1.0);
        QVERIFY(std::abs(contrast(QColor(u"#777777"_s), Qt::white) - 4.48) < 0.01);
    }

    void translucentColoursAreBlendedWithTheirBackground()
    {
        QCOMPARE(over(QColor(255, 255, 255, 0), QColor(10, 20, 30)), QColor(10, 20, 30));
        QCOMPARE(over(Qt::white, Qt::black), QColor(Qt::white));
        QCOMPARE(over(QColor::fromRgbF(1, 1, 1, 0.5F), Qt::black).red(), 128);
    }

    void aColourChangesNoMoreThanNeeded()
    {
        const QColor moved = legible(QColor(u"#3daee9"_s), {Qt::white}, textContrast);
        QVERIFY(contrast(moved, Qt::white) >= textContrast);
        QVERIFY(contrast(moved, Qt::white) < textContrast + 0.1);
    }
};

QUILLET_TEST(ColorsTest, runTest<ColorsTest>);

#include "ColorsTest.moc"
