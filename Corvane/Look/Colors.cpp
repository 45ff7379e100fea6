// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Contrast.h"
#include "Corvane/Look/Look.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane::look {

namespace {

/// The backgrounds of texts and symbols.
QList<QColor> grounds(const QPalette &palette)
{
    return {palette.color(QPalette::Window), cardColor(palette)};
}

/// `color`, made legible also on a tint of itself, which is the background of a badge.
QColor legibleOnItsTint(QColor color, const QPalette &palette)
{
    constexpr float strongestTint = 0.125F;
    constexpr int rounds = 4; // a darker colour has a darker tint
    for (int round = 0; round < rounds; ++round) {
        QColor tint = color;
        tint.setAlphaF(strongestTint);
        color = legible(color, grounds(palette) << over(tint, palette.color(QPalette::Window)), textContrast);
    }
    return color;
}

QColor accent(const QPalette &palette)
{
    return palette.color(QPalette::Highlight);
}

QColor workedOut(Ink ink, const QPalette &palette)
{
    const bool dark = isDark(palette);
    switch (ink) {
    case Ink::primary:
        return palette.color(QPalette::WindowText);
    case Ink::secondary:
        return legibleOnItsTint(
            mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.68), palette);
    case Ink::accent:
        return legible(accent(palette), grounds(palette), textContrast);
    case Ink::onAccent:
        return Qt::white;
    case Ink::red:
        return legibleOnItsTint(dark ? QColor(255, 105, 97) : QColor(200, 30, 30), palette);
    case Ink::green:
        return legibleOnItsTint(dark ? QColor(80, 210, 110) : QColor(24, 128, 56), palette);
    case Ink::orange:
        return legibleOnItsTint(dark ? QColor(255, 165, 60) : QColor(176, 88, 0), palette);
    case Ink::blue:
        return legibleOnItsTint(dark ? QColor(100, 170, 255) : QColor(20, 100, 200), palette);
    }
    Q_UNREACHABLE();
}

using Inks = std::array<QColor, 8>;

/// The inks under `palette`. Every repaint needs them and computing them is slow, so those of the last eight
/// palettes are cached.
const Inks &inksOf(const QPalette &palette)
{
    using Source = std::array<QRgb, 3>; // what the inks are made of
    static std::array<std::pair<Source, Inks>, 8> kept;
    static std::size_t oldest = 0;
    const Source source{palette.color(QPalette::Window).rgb(), palette.color(QPalette::WindowText).rgb(),
                        palette.color(QPalette::Highlight).rgb()};
    const auto known = std::ranges::find(kept, source, &std::pair<Source, Inks>::first);
    if (known != kept.end()) {
        return known->second;
    }
    auto &[keptSource, inks] = kept.at(std::exchange(oldest, (oldest + 1) % kept.size()));
    keptSource = source;
    for (std::size_t ink = 0; ink < inks.size(); ++ink) {
        inks.at(ink) = workedOut(static_cast<Ink>(ink), palette);
    }
    return inks;
}

} // namespace

bool isDark(const QPalette &palette)
{
    return contrast(palette.color(QPalette::Window), Qt::black) <
           contrast(palette.color(QPalette::WindowText), Qt::black);
}

QColor color(Ink ink, const QPalette &palette)
{
    return inksOf(palette).at(static_cast<std::size_t>(ink));
}

QColor color(Ink ink, const QPalette &palette, double opacity)
{
    QColor faded = color(ink, palette);
    faded.setAlphaF(static_cast<float>(opacity));
    return faded;
}

QColor cardColor(const QPalette &palette)
{
    // A little lighter than the window: white cards on a light window, grey ones on a dark window.
    return isDark(palette) ? mixed(palette.color(QPalette::Window), Qt::white, 0.94)
                           : mixed(palette.color(QPalette::Window), Qt::white, 0.25);
}

QColor separatorColor(const QPalette &palette)
{
    return color(Ink::primary, palette, 0.14);
}

QColor accentGround(const QPalette &palette)
{
    // As light on a dark window as white text allows.
    const QColor seen = legible(accent(palette), grounds(palette), symbolContrast);
    return legible(seen, {Qt::white}, textContrast);
}

QColor accentEdge(const QPalette &palette)
{
    // White knobs lie on it, so it contrasts with white, too.
    return legible(legible(accent(palette), grounds(palette), symbolContrast), {Qt::white}, symbolContrast);
}

QColor fieldColor(const QPalette &palette)
{
    // A dark desktop's base may be black, too hard an edge on a card.
    const QColor ground = palette.color(QPalette::Base);
    return isDark(palette) ? mixed(ground, palette.color(QPalette::Window), 0.4) : ground;
}

QColor edgeColor(const QPalette &palette)
{
    return legible(mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.4),
                   grounds(palette) << fieldColor(palette), symbolContrast);
}

QColor placeholderColor(const QPalette &palette)
{
    const QColor field = fieldColor(palette);
    return legible(mixed(palette.color(QPalette::Text), field, 0.6), {field}, textContrast);
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

} // namespace corvane::look
