// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"

#include <QKeyEvent>
#include <QScrollBar>

namespace corvane::look {

ScrollView::ScrollView(const QString &label, QWidget *content, QWidget *parent) : QScrollArea(parent)
{
    setAccessibleName(label);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    const auto followRange = [this] {
        const auto scrolls = [](const QScrollBar *bar) { return bar->maximum() > bar->minimum(); };
        setFocusPolicy(scrolls(verticalScrollBar()) || scrolls(horizontalScrollBar()) ? Qt::TabFocus
                                                                                      : Qt::NoFocus);
    };
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, followRange);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, followRange);
}

void ScrollView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Home:
        verticalScrollBar()->setValue(verticalScrollBar()->minimum());
        return;
    case Qt::Key_End:
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        return;
    case Qt::Key_Space:
        verticalScrollBar()->triggerAction(event->modifiers().testFlag(Qt::ShiftModifier)
                                               ? QAbstractSlider::SliderPageStepSub
                                               : QAbstractSlider::SliderPageStepAdd);
        return;
    default:
        QScrollArea::keyPressEvent(event);
    }
}

} // namespace corvane::look
