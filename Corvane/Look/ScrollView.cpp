// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Surfaces.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

namespace corvane::look {

namespace {

/// The room of the focus ring, which would else lie below the content.
constexpr int ring = static_cast<int>(control::focusRingWidth);

} // namespace

ScrollView::ScrollView(const QString &name, QWidget *content, QWidget *parent) : QScrollArea(parent)
{
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(ring, ring, ring, ring);
    setWidgetResizable(true);
    setWidget(content);
    // What lies behind shows.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ScrollView::followRange);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &ScrollView::followRange);
    followRange();
}

void ScrollView::followRange()
{
    const bool scrolls = verticalScrollBar()->maximum() > 0 || horizontalScrollBar()->maximum() > 0;
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}

QSize ScrollView::sizeHint() const
{
    return widget()->sizeHint() + QSize(2 * ring, 2 * ring);
}

bool ScrollView::event(QEvent *event)
{
    const bool isHandled = QScrollArea::event(event);
    if (event->type() == QEvent::Paint && hasFocus()) {
        QPainter painter(this);
        paintFocusRing(painter, rect(), control::cornerRadius, palette());
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return isHandled;
}

void ScrollView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home) {
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    } else if (event->key() == Qt::Key_End) {
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    } else {
        QScrollArea::keyPressEvent(event);
    }
}

} // namespace corvane::look
