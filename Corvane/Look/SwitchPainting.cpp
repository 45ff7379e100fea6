// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SwitchPainting.h"

#include "Corvane/Look/Contrast.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Motion.h"
#include "Corvane/Look/Painting.h"

#include <QCheckBox>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace corvane::look {

namespace {

QSize trackSize(const QStyleOption &option)
{
    const int height = static_cast<int>(std::lround(option.fontMetrics.height() * 1.15));
    return {static_cast<int>(std::lround(height * 1.75)), height};
}

QRectF trackRect(const QStyleOption &option)
{
    const QSize size = trackSize(option);
    return QRectF(option.direction == Qt::LeftToRight ? option.rect.width() - size.width() : 0,
                  (option.rect.height() - size.height()) / 2.0, size.width(), size.height());
}

} // namespace

KnobSlide::KnobSlide(QCheckBox &box) : QVariantAnimation(&box), m_box(box)
{
    setEasingCurve(QEasingCurve::InOutQuad);
    connect(&box, &QAbstractButton::toggled, this, &KnobSlide::slide);
    connect(this, &QVariantAnimation::valueChanged, &box, qOverload<>(&QWidget::update));
}

double KnobSlide::position(const QCheckBox &box)
{
    const auto *slide = box.findChild<const KnobSlide *>(QString(), Qt::FindDirectChildrenOnly);
    if (slide != nullptr && slide->state() == Running) {
        return slide->currentValue().toDouble();
    }
    return box.isChecked() ? 1 : 0;
}

void KnobSlide::slide(bool isOn)
{
    const double end = isOn ? 1 : 0;
    const double begin = state() == Running ? currentValue().toDouble() : 1 - end;
    stop();
    const int duration = motionDuration(m_box, control::animationDuration);
    if (duration <= 0) {
        return;
    }
    setDuration(duration);
    setStartValue(begin);
    setEndValue(end);
    start();
}

QSize switchSize(const QStyleOptionButton &option)
{
    const QSize track = trackSize(option);
    return {option.fontMetrics.horizontalAdvance(option.text) + space::medium + track.width(),
            std::max(option.fontMetrics.height(), track.height()) + 2 * space::tight};
}

QRect switchTrack(const QStyleOption &option)
{
    return trackRect(option).toAlignedRect();
}

void paintSwitch(QPainter &painter, const QStyleOptionButton &option, double position)
{
    const ControlPainter guard(painter, option);
    const QPalette colors = inkPalette(option);
    const bool isLeftToRight = option.direction == Qt::LeftToRight;
    painter.setPen(color(Ink::primary, colors));
    painter.drawText(option.rect,
                     static_cast<int>(isLeftToRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                         Qt::AlignVCenter,
                     option.text);

    const QRectF track = trackRect(option);
    const double radius = track.height() / 2;
    fillRounded(painter, track, radius, mixed(accentEdge(colors), edgeColor(colors), position));
    fillRounded(painter, track, radius, black(groundOpacity(option)));
    constexpr double gap = 2;
    const double side = track.height() - 2 * gap;
    const double way = track.width() - 2 * gap - side;
    const double fromLeft = (isLeftToRight ? position : 1 - position) * way;
    const QRectF knob(track.left() + gap + fromLeft, track.top() + gap, side, side);
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(0.2));
    painter.drawEllipse(knob.translated(0, 0.5));
    painter.setBrush(white(1));
    painter.drawEllipse(knob);
}

} // namespace corvane::look
