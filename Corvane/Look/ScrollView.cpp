// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Surfaces.h"

#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleOption>

#include <algorithm>

using namespace Qt::StringLiterals;

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
        if (showsFocus(*parentWidget())) {
            QPainter painter(this);
            paintFocusRing(painter, rect(), control::cornerRadius, palette());
        }
    }
};

/// A slim bar: a thumb on nothing, at some distance from the content.
class BarStyle final : public QProxyStyle {
public:
    BarStyle() : QProxyStyle(u"Fusion"_s) {}

    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override
    {
        switch (metric) {
        case PM_ScrollBarExtent:
            return extent;
        case PM_ScrollBarSliderMin:
            return minimumThumbLength;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override
    {
        const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
        if (control != CC_ScrollBar || bar == nullptr || bar->orientation != Qt::Vertical) {
            return QProxyStyle::subControlRect(control, option, part, widget);
        }
        const int groove = bar->rect.height();
        const double share =
            bar->pageStep / std::max(1.0, double(bar->maximum) - bar->minimum + bar->pageStep);
        const int length = std::min(groove, std::max(minimumThumbLength, static_cast<int>(groove * share)));
        const int top = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                                groove - length, bar->upsideDown);
        switch (part) {
        case SC_ScrollBarGroove:
            return bar->rect;
        case SC_ScrollBarSlider:
            return {bar->rect.left(), top, bar->rect.width(), length};
        case SC_ScrollBarSubPage:
            return {bar->rect.left(), 0, bar->rect.width(), top};
        case SC_ScrollBarAddPage:
            return {bar->rect.left(), top + length, bar->rect.width(), groove - top - length};
        default:
            return {};
        }
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override
    {
        if (control != CC_ScrollBar) {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
            return;
        }
        const bool isHeld = option->state.testFlag(State_Sunken);
        const bool isTouched = option->state.testFlag(State_MouseOver);
        const QRect slider = subControlRect(control, option, SC_ScrollBarSlider, widget);
        const int thickness = isHeld || isTouched ? held : resting;
        const int left =
            option->direction == Qt::RightToLeft ? slider.left() : slider.right() + 1 - thickness;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(color(Ink::primary, option->palette, isHeld ? 0.6 : isTouched ? 0.5 : 0.35));
        painter->drawRoundedRect(QRectF(left, slider.top(), thickness, slider.height()), thickness / 2.0,
                                 thickness / 2.0);
        painter->restore();
    }

private:
    static constexpr int extent = 10;
    static constexpr int resting = 4; ///< how thick the thumb is
    static constexpr int held = 6;
    static constexpr int minimumThumbLength = 24;
};

} // namespace

void makeSlim(QScrollBar &bar)
{
    auto *style = new BarStyle;
    style->setParent(&bar);
    bar.setStyle(style);
    bar.setAttribute(Qt::WA_OpaquePaintEvent, false);
}

ScrollView::ScrollView(const QString &label, QWidget *content, QWidget *parent)
    : QScrollArea(parent)
    , m_ring(new Ring(this))
{
    setAccessibleName(label);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    makeSlim(*verticalScrollBar());
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
