// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ElidedText.h"

#include "Corvane/Utilities/OneLine.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QTextOption>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane::look {

ElidedText::ElidedText(const QString &text, TextStyle style, Ink ink, QWidget *parent)
    : QLabel(parent)
    , m_style(style)
    , m_ink(ink)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFont(look::font(style));
    setLine(text);
}

void ElidedText::setLine(const QString &text)
{
    const QString line = oneLine(text);
    setText(line);
    setAccessibleName(line);
    updateToolTip();
}

QSize ElidedText::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 1, metrics.height()};
}

QSize ElidedText::minimumSizeHint() const
{
    const QFontMetrics metrics(font());
    return {std::min(sizeHint().width(), metrics.averageCharWidth() * 8), metrics.height()};
}

void ElidedText::updateToolTip()
{
    // Rich text, so that a long tool tip wraps; hence the text is escaped.
    const bool isCut = QFontMetrics(font()).horizontalAdvance(text()) > width();
    setToolTip(isCut ? u"<p>"_s + text().toHtmlEscaped() + u"</p>"_s : QString());
}

void ElidedText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(color(m_ink, palette()));
    painter.setFont(font());
    // A right-to-left name keeps its own direction, but is aligned as the other texts are.
    QTextOption option((isLeftToRight() ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                       Qt::AlignVCenter);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(QRectF(rect()), QFontMetrics(font()).elidedText(text(), Qt::ElideRight, width()),
                     option);
}

void ElidedText::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    updateToolTip();
}

bool ElidedText::event(QEvent *event)
{
    const bool isHandled = QLabel::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(look::font(m_style));
        updateGeometry();
        updateToolTip();
    }
    return isHandled;
}

} // namespace corvane::look
