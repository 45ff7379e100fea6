// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Palettes.h"

#include "Corvane/Look/Look.h"

namespace corvane::look {

namespace {

struct Grounds {
    QRgb window;
    QRgb base;
    QRgb button;
    QRgb text;
};

QPalette paletteOf(const Grounds &grounds)
{
    QPalette palette{QColor(grounds.button), QColor(grounds.window)};
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Window, QColor(grounds.window));
        palette.setColor(group, QPalette::Base, QColor(grounds.base));
        palette.setColor(group, QPalette::AlternateBase, QColor(grounds.window));
        palette.setColor(group, QPalette::Button, QColor(grounds.button));
        palette.setColor(group, QPalette::Highlight, QColor(53, 132, 228));
        palette.setColor(group, QPalette::HighlightedText, Qt::white);
        QColor text(grounds.text);
        text.setAlphaF(group == QPalette::Disabled ? 0.5F : 1);
        for (const QPalette::ColorRole role :
             {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
            palette.setColor(group, role, text);
        }
        palette.setColor(group, QPalette::ToolTipBase, QColor(grounds.base));
    }
    return palette;
}

} // namespace

QPalette lightPalette()
{
    return paletteOf({.window = qRgb(246, 246, 247),
                      .base = qRgb(255, 255, 255),
                      .button = qRgb(240, 240, 242),
                      .text = qRgb(28, 28, 32)});
}

QPalette darkPalette()
{
    return paletteOf({.window = qRgb(40, 40, 44),
                      .base = qRgb(30, 30, 33),
                      .button = qRgb(58, 58, 62),
                      .text = qRgb(240, 240, 243)});
}

QPalette withAppearance(const QPalette &toolkits, const Appearance &appearance)
{
    QPalette palette = toolkits;
    const bool wantsDark = appearance.scheme == Appearance::Scheme::dark;
    if (appearance.scheme != Appearance::Scheme::unsaid && wantsDark != isDark(toolkits)) {
        palette = wantsDark ? darkPalette() : lightPalette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::Highlight, toolkits.color(group, QPalette::Highlight));
        }
    }
    if (appearance.accent) {
        const auto [red, green, blue] = *appearance.accent;
        const QColor accent =
            QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::Highlight, accent);
        }
    }
    return palette;
}

} // namespace corvane::look
