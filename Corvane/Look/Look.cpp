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

/// The share of the desktop font's size.
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

/// Tells all widgets of a view that the desktop's font has changed.
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
    // A desktop's font has a size in typographic points or in pixels, never both.
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

QFont withAlignedDigits(QFont font)
{
    // Nearly all desktop fonts have digits of one width; kerning would still pull some together.
    font.setKerning(false);
    return font;
}

QFont font(int size, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

} // namespace corvane::look
