// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/LineLabel.h"

#include "Corvane/Utilities/OneLine.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

namespace corvane::look {

LineLabel::LineLabel(const QFont &font, const QColor &color, double shrinksTo, QWidget *parent)
    : QLabel(parent)
    , m_color(color)
    , m_largestSize(font.pixelSize())
    , m_smallestSize(static_cast<int>(std::ceil(font.pixelSize() * shrinksTo - 1e-9)))
    , m_fitted(font)
{
    setFont(font);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LineLabel::setLine(const QString &text)
{
    const QString line = oneLine(text);
    if (line == m_line) {
        return;
    }
    m_line = line;
    setText(line);
    setAccessibleName(line);
    if (m_hasWidth) {
        fit();
    } else {
        m_shown = line;
    }
}

QSize LineLabel::sizeHint() const
{
    const QFontMetricsF metrics(m_fitted);
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(m_shown))),
            static_cast<int>(std::ceil(metrics.height()))};
}

QSize LineLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void LineLabel::fit()
{
    const double room = width();
    int low = m_smallestSize;
    int high = m_largestSize;
    QFont font = m_fitted;
    const auto fits = [&](int size) {
        font.setPixelSize(size);
        return QFontMetricsF(font).horizontalAdvance(m_line) <= room;
    };
    // The largest size that fits, or the smallest allowed. Usually the largest of all fits, and each size
    // that is tried costs the memory of a font.
    if (fits(high)) {
        low = high;
    }
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (fits(middle)) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    font.setPixelSize(low);
    m_fitted = font;
    m_shown = QFontMetricsF(m_fitted).elidedText(m_line, Qt::ElideRight, room);
    updateGeometry();
    update();
}

void LineLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(m_color);
    painter.setFont(m_fitted);
    // A right-to-left name keeps its own direction, but is aligned as the other texts are.
    painter.setLayoutDirection(m_line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(painter.layoutDirection());
    painter.drawText(QRectF(rect()), m_shown, option);
}

void LineLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (!m_hasWidth || event->size().width() != event->oldSize().width()) {
        m_hasWidth = true;
        fit();
    }
}

} // namespace corvane::look
