// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Glow.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Motion.h"

#include <QEvent>
#include <QPainter>

namespace corvane::look {

void Glow::behind(QWidget &target, QWidget &ground)
{
    if (const int duration = motionDuration(target, glow::duration); duration > 0) {
        new Glow(target, ground, duration);
    }
}

Glow::Glow(QWidget &target, QWidget &ground, int duration) : QWidget(&ground), m_target(target)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    target.installEventFilter(this);
    connect(&target, &QObject::destroyed, this, &QObject::deleteLater);
    m_strength.setStartValue(1.0);
    m_strength.setEndValue(0.0);
    m_strength.setDuration(duration);
    m_strength.setEasingCurve(QEasingCurve::InQuad);
    connect(&m_strength, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&m_strength, &QVariantAnimation::finished, this, [this] {
        hide();
        deleteLater();
    });
    follow();
    lower();
    show();
    m_strength.start();
}

void Glow::follow()
{
    const QRect area(m_target.mapTo(parentWidget(), QPoint()), m_target.size());
    setGeometry(area.adjusted(-glow::reach, 0, glow::reach, glow::reach));
}

bool Glow::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
        follow();
    } else if (event->type() == QEvent::Hide) {
        hide();
    }
    return false;
}

void Glow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(Ink::accent, palette(), glow::opacity * m_strength.currentValue().toDouble()));
    painter.drawRoundedRect(rect(), control::cornerRadius, control::cornerRadius);
}

} // namespace corvane::look
