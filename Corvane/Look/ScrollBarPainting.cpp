// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollBarPainting.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace corvane::look {

QRect scrollBarPart(const QStyleOptionSlider &bar, QStyle::SubControl part)
{
    const bool isVertical = bar.orientation == Qt::Vertical;
    const int groove = isVertical ? bar.rect.height() : bar.rect.width();
    const double share = bar.pageStep / std::max(1.0, double(bar.maximum) - bar.minimum + bar.pageStep);
    const int length = std::min(groove, std::max(scrollBar::minimumLength, static_cast<int>(groove * share)));
    const int begin = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      groove - length, bar.upsideDown);
    const auto stretch = [&](int from, int extent) {
        return isVertical ? QRect(bar.rect.left(), from, bar.rect.width(), extent)
                          : QRect(from, bar.rect.top(), extent, bar.rect.height());
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    case QStyle::SC_ScrollBarSlider:
        return stretch(begin, length);
    case QStyle::SC_ScrollBarSubPage:
        return stretch(0, begin);
    case QStyle::SC_ScrollBarAddPage:
        return stretch(begin + length, groove - begin - length);
    default:
        return {};
    }
}

void paintScrollBar(QPainter &painter, const QStyleOptionSlider &bar)
{
    const ControlPainter guard(painter, bar);
    const bool isHeld = bar.state.testFlag(QStyle::State_Sunken);
    const bool isTouched = isHeld || bar.state.testFlag(QStyle::State_MouseOver);
    const int thickness = isTouched ? scrollBar::touched : scrollBar::resting;
    QRect thumb = scrollBarPart(bar, QStyle::SC_ScrollBarSlider);
    constexpr int fromEdge = scrollBar::fromEdge;
    if (bar.orientation == Qt::Horizontal) {
        thumb.setTop(thumb.bottom() + 1 - thickness - fromEdge);
        thumb.setHeight(thickness);
        thumb.adjust(fromEdge, 0, -fromEdge, 0);
    } else {
        thumb.adjust(0, fromEdge, 0, -fromEdge);
        if (bar.direction == Qt::RightToLeft) {
            thumb.setLeft(thumb.left() + fromEdge);
        } else {
            thumb.setLeft(thumb.right() + 1 - thickness - fromEdge);
        }
        thumb.setWidth(thickness);
    }
    const double opacity = isHeld      ? scrollBar::heldOpacity
                           : isTouched ? scrollBar::touchedOpacity
                                       : scrollBar::restingOpacity;
    fillRounded(painter, thumb, thickness / 2.0, color(Ink::primary, bar.palette, opacity));
}

} // namespace corvane::look
