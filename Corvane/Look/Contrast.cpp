// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Contrast.h"

#include <algorithm>
#include <cmath>

namespace corvane::look {

namespace {

/// The relative luminance, 0 to 1 (WCAG 2).
double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double leastContrast(const QColor &color, const QList<QColor> &grounds)
{
    double least = 21;
    for (const QColor &ground : grounds) {
        least = std::min(least, contrast(color, ground));
    }
    return least;
}

QColor withLightness(const QColor &color, double lightness)
{
    // Rounded to eight bits, as it will be drawn.
    return QColor(QColor::fromHslF(std::max(0.0F, color.hslHueF()), color.hslSaturationF(),
                                   static_cast<float>(lightness))
                      .rgb());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

QColor mixed(const QColor &one, const QColor &other, double share)
{
    const auto mix = [share](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

QColor over(const QColor &color, const QColor &ground)
{
    return mixed(color, ground, color.alphaF());
}

QColor legible(const QColor &color, const QList<QColor> &grounds, double ratio)
{
    if (leastContrast(color, grounds) >= ratio) {
        return color;
    }
    const double end = leastContrast(Qt::white, grounds) > leastContrast(Qt::black, grounds) ? 1 : 0;
    // Contrast grows steadily towards white or black, so bisection finds the lightness where it suffices.
    double unread = color.lightnessF();
    double read = end;
    constexpr int steps = 9; // finer than a colour of eight bits
    for (int step = 0; step < steps; ++step) {
        const double middle = (unread + read) / 2;
        (leastContrast(withLightness(color, middle), grounds) >= ratio ? read : unread) = middle;
    }
    return withLightness(color, read);
}

} // namespace corvane::look
