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

/// The ring about a view that has the keyboard; it lies above the content.
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

ScrollView::ScrollView(const QString &name, QWidget *content, QWidget *parent)
    : QScrollArea(parent)
    , m_ring(new Ring(this))
{
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
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
    return widget()->sizeHint();
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
    m_ring->setGeometry(viewport()->geometry());
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
