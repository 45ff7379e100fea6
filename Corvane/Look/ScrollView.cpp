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

class Ring final : public QWidget {
public:
    explicit Ring(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintFocusRing(painter, rect(), control::cornerRadius, palette());
    }
};

} // namespace

ScrollView::ScrollView(const QString &label, QWidget *content, QWidget *parent)
    : QScrollArea(parent)
    , m_ring(new Ring(this))
{
    setAccessibleName(label);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this](int least, int most) { setFocusPolicy(most > least ? Qt::TabFocus : Qt::NoFocus); });
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

void ScrollView::focusInEvent(QFocusEvent *event)
{
    QScrollArea::focusInEvent(event);
    m_ring->raise();
    m_ring->show();
}

void ScrollView::focusOutEvent(QFocusEvent *event)
{
    QScrollArea::focusOutEvent(event);
    m_ring->hide();
}

void ScrollView::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    m_ring->setGeometry(rect());
}

} // namespace corvane::look
