// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/PageIndicator.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Motion.h"
#include "Corvane/Views/SetupStep.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace corvane {

using namespace look;

namespace {

/// Interpolates from `from` (0) to `to` (1), opacity included.
QColor between(const QColor &from, const QColor &to, double share)
{
    const auto mix = [share](float a, float b) { return static_cast<float>(a + share * (b - a)); };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()), mix(from.alphaF(), to.alphaF()));
}

} // namespace

PageIndicator::PageIndicator(int count, QWidget *parent) : QLabel(parent), m_count(count)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_place.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_place, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    setPage(0);
}

void PageIndicator::setPage(int page)
{
    Q_ASSERT(page >= 0 && page < m_count);
    if (page == m_page) {
        return;
    }
    const double from =
        m_place.state() == QVariantAnimation::Running ? m_place.currentValue().toDouble() : m_page;
    m_place.stop();
    m_page = page;
    setAccessibleName(pageText(page, m_count));
    if (const int duration = motionDuration(*this, setup::slideDuration); duration > 0) {
        m_place.setStartValue(from);
        m_place.setEndValue(double(page));
        m_place.setDuration(duration);
        m_place.start();
    }
    update();
}

QSize PageIndicator::sizeHint() const
{
    return {setup::currentCapsuleWidth + (m_count - 1) * (setup::capsuleWidth + setup::capsuleSpacing),
            setup::capsuleHeight};
}

void PageIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr double radius = setup::capsuleHeight / 2.0;
    const double place =
        m_place.state() == QVariantAnimation::Running ? m_place.currentValue().toDouble() : m_page;
    const QColor current = color(Ink::accent, palette());
    const QColor other = color(Ink::secondary, palette(), setup::capsuleOpacity);
    double left = 0;
    for (int page = 0; page < m_count; ++page) {
        const double share = std::max(0.0, 1 - std::abs(place - page)); // of the long capsule
        const double width = setup::capsuleWidth + share * (setup::currentCapsuleWidth - setup::capsuleWidth);
        const double visualLeft = isLeftToRight() ? left : this->width() - left - width;
        painter.setBrush(between(other, current, share));
        painter.drawRoundedRect(QRectF(visualLeft, 0, width, setup::capsuleHeight), radius, radius);
        left += width + setup::capsuleSpacing;
    }
}

} // namespace corvane
