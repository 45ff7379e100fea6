// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SymbolTurn.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Motion.h"

#include <QEvent>
#include <QWidget>

namespace corvane::look {

SymbolTurn::SymbolTurn(QWidget &button) : QVariantAnimation(&button), m_button(button)
{
    setStartValue(0.0);
    setEndValue(360.0);
    button.installEventFilter(this);
    connect(this, &QVariantAnimation::valueChanged, &button, qOverload<>(&QWidget::update));
    connect(this, &QVariantAnimation::finished, this, &SymbolTurn::goOn);
}

void SymbolTurn::begin()
{
    ++m_works;
    if (state() != Running) {
        goOn();
    }
}

void SymbolTurn::end()
{
    Q_ASSERT(m_works > 0);
    --m_works;
}

void SymbolTurn::goOn()
{
    const int duration = motionDuration(m_button, control::turnDuration);
    if (m_works > 0 && duration > 0) {
        setDuration(duration);
        start();
    } else {
        m_button.update();
    }
}

double SymbolTurn::degrees(const QWidget *button)
{
    const auto *turn = button != nullptr
                           ? button->findChild<const SymbolTurn *>(QString(), Qt::FindDirectChildrenOnly)
                           : nullptr;
    return turn != nullptr && turn->state() == Running ? turn->currentValue().toDouble() : 0;
}

bool SymbolTurn::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Hide) {
        stop();
    } else if (event->type() == QEvent::Show && state() != Running) {
        goOn();
    }
    return false;
}

} // namespace corvane::look
