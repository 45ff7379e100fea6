// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Look.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace corvane::look {

namespace {

/// The share of the desktop's font's size.
double shareOf(TextStyle style)
{
    switch (style) {
    case TextStyle::largeTitle:
        return 2.0;
    case TextStyle::title:
        return 1.65;
    case TextStyle::title3:
        return 1.2;
    case TextStyle::headline:
    case TextStyle::body:
        return 1.0;
    case TextStyle::subheadline:
        return 0.92;
    case TextStyle::caption:
        return 0.85;
    case TextStyle::caption2:
        return 0.78;
    }
    Q_UNREACHABLE();
}

QColor mixed(const QColor &one, const QColor &other, double share)
{
    const auto mix = [share](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

/// How bright a colour is to the eye, 0 to 1.
double brightness(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [low, high] = std::minmax({brightness(one), brightness(other)});
    return (high + 0.05) / (low + 0.05);
}

/// `color` moved towards the palette's text until it can be read on the palette's background. A desktop's
/// highlight may be as pale as its window.
QColor legible(QColor color, const QPalette &palette)
{
    constexpr double minimumContrast = 4.5;
    const QColor text = palette.color(QPalette::WindowText);
    const QColor ground = palette.color(QPalette::Window);
    for (int step = 0; step < 20 && contrast(color, ground) < minimumContrast; ++step) {
        color = mixed(color, text, 0.9);
    }
    return color;
}

/// Passes on to all of a view's widgets that the desktop's font has changed.
class FontMessenger final : public QObject {
public:
    explicit FontMessenger(QWidget &view) : QObject(&view) {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FontChange) {
            for (QWidget *widget : watched->findChildren<QWidget *>()) {
                QEvent change(QEvent::ApplicationFontChange);
                QCoreApplication::sendEvent(widget, &change);
            }
        }
        return false;
    }
};

} // namespace

QFont font(TextStyle style)
{
    switch (style) {
    case TextStyle::headline:
        return font(style, QFont::DemiBold);
    case TextStyle::largeTitle:
    case TextStyle::title:
    case TextStyle::title3:
    case TextStyle::body:
    case TextStyle::subheadline:
    case TextStyle::caption:
    case TextStyle::caption2:
        return font(style, QFont::Normal);
    }
    Q_UNREACHABLE();
}

QFont font(TextStyle style, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    // A desktop's font is given in typographic points or in pixels, never in both.
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * shareOf(style));
    } else {
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * shareOf(style)))));
    }
    font.setWeight(weight);
    return font;
}

void followDesktopFont(QWidget &view)
{
    view.installEventFilter(new FontMessenger(view));
}

QFont withMonospacedDigits(QFont font)
{
    // The desktop's fonts nearly all have digits of one width; kerning would still pull some together.
    font.setKerning(false);
    return font;
}

bool isDark(const QPalette &palette)
{
    return brightness(palette.color(QPalette::Window)) < brightness(palette.color(QPalette::WindowText));
}

QColor color(Ink ink, const QPalette &palette)
{
    const bool dark = isDark(palette);
    switch (ink) {
    case Ink::primary:
        return palette.color(QPalette::WindowText);
    case Ink::secondary:
        return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.68);
    case Ink::accent:
        return legible(palette.color(QPalette::Highlight), palette);
    case Ink::onAccent:
        return contrast(Qt::white, color(Ink::accent, palette)) >= 3 ? QColor(Qt::white) : QColor(Qt::black);
    case Ink::red:
        return legible(dark ? QColor(255, 105, 97) : QColor(200, 30, 30), palette);
    case Ink::green:
        return legible(dark ? QColor(80, 210, 110) : QColor(24, 128, 56), palette);
    case Ink::orange:
        return legible(dark ? QColor(255, 165, 60) : QColor(176, 88, 0), palette);
    case Ink::blue:
        return legible(dark ? QColor(100, 170, 255) : QColor(20, 100, 200), palette);
    }
    Q_UNREACHABLE();
}

QColor color(Ink ink, const QPalette &palette, double opacity)
{
    QColor faded = color(ink, palette);
    faded.setAlphaF(static_cast<float>(opacity));
    return faded;
}

QColor cardColor(const QPalette &palette)
{
    // A little nearer to the light: white cards on a light window, grey ones on a dark one.
    return isDark(palette) ? mixed(palette.color(QPalette::Window), Qt::white, 0.94)
                           : mixed(palette.color(QPalette::Window), Qt::white, 0.25);
}

QColor separatorColor(const QPalette &palette)
{
    return color(Ink::primary, palette, 0.14);
}

QColor fieldColor()
{
    // Not out of a field's own palette, in which the ground is made clear. On a dark desktop that may be
    // black, too hard an edge on a card.
    const QPalette palette = QGuiApplication::palette();
    const QColor ground = palette.color(QPalette::Base);
    return isDark(palette) ? mixed(ground, palette.color(QPalette::Window), 0.4) : ground;
}

QColor fieldEdgeColor(const QPalette &palette)
{
    return color(Ink::primary, palette, 0.28);
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

QFont font(int size, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

} // namespace corvane::look
