// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/DebugRow.h"

#include "Corvane/Look/Paragraph.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Symbols.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane {

using namespace look;

namespace {

using debugReport::Tone;

QFont detailFont()
{
    return look::font(TextStyle::subheadline);
}

QString symbolName(Tone tone)
{
    switch (tone) {
    case Tone::plain:
        return {};
    case Tone::good:
        return u"checkmark.circle.fill"_s;
    case Tone::waiting:
        return u"clock.arrow.circlepath"_s;
    case Tone::warning:
        return u"exclamationmark.triangle.fill"_s;
    case Tone::bad:
        return u"xmark.circle.fill"_s;
    }
    Q_UNREACHABLE();
}

Ink ink(Tone tone)
{
    switch (tone) {
    case Tone::plain:
        return Ink::primary;
    case Tone::good:
        return Ink::green;
    case Tone::waiting:
        return Ink::secondary;
    case Tone::warning:
        return Ink::orange;
    case Tone::bad:
        return Ink::red;
    }
    Q_UNREACHABLE();
}

} // namespace

DebugRow::DebugRow(TextStyle style, QWidget *parent) : QWidget(parent), m_style(style) {}

void DebugRow::setRow(const debugReport::Row &row)
{
    if (row != m_row) {
        m_row = row;
        forgetMeasures();
        setAccessibleName(debugReport::rowText(row));
        update();
    }
}

void DebugRow::setColumns(Columns columns)
{
    if (columns != m_columns) {
        m_columns = columns;
        m_measuredWidth = -1;
        update();
    }
}

QFont DebugRow::titleFont() const
{
    return withAlignedDigits(look::font(m_style));
}

QFont DebugRow::leadFont() const
{
    return withAlignedDigits(look::font(m_style == TextStyle::body ? TextStyle::subheadline : m_style));
}

int DebugRow::leadWidth() const
{
    if (m_leadWidth < 0) {
        if (m_row.tone != Tone::plain) {
            m_leadWidth = symbolSize(titleFont());
        } else {
            m_leadWidth =
                m_row.lead.isEmpty() ? 0 : QFontMetrics(leadFont()).horizontalAdvance(m_row.lead) + 1;
        }
    }
    return m_leadWidth;
}

int DebugRow::textWidth(int width) const
{
    const int inside = width - 2 * control::rowInset;
    return m_columns.areBeside && m_columns.lead > 0 ? inside - m_columns.lead - space::medium : inside;
}

int DebugRow::heightForWidth(int width) const
{
    if (width == m_measuredWidth) {
        return m_measuredHeight;
    }
    const int room = textWidth(width);
    int height = paragraphHeight(m_row.title, titleFont(), room) +
                 paragraphHeight(m_row.detail, detailFont(), room) +
                 paragraphHeight(m_row.problem, detailFont(), room);
    const int lead = QFontMetrics(leadFont()).height();
    if (m_columns.areBeside) {
        height = std::max(height, lead);
    } else if (leadWidth() > 0) {
        height += lead;
    }
    m_measuredWidth = width;
    m_measuredHeight = height + 2 * control::rowPadding;
    return m_measuredHeight;
}

void DebugRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int room = textWidth(width());
    const int inside = width() - 2 * control::rowInset;
    int y = control::rowPadding;
    const int textLeft = isLeftToRight() ? width() - control::rowInset - room : control::rowInset;
    const QFontMetrics titleMetrics(titleFont());
    const QFontMetrics leadMetrics(leadFont());
    if (m_row.tone != Tone::plain) {
        const int side = symbolSize(titleFont());
        const int left = isLeftToRight() ? control::rowInset : width() - control::rowInset - side;
        const int height = m_columns.areBeside ? titleMetrics.height() : leadMetrics.height();
        painter.drawPixmap(left, y + (height - side) / 2,
                           symbolPixmap(symbolName(m_row.tone), side, color(ink(m_row.tone), palette()),
                                        devicePixelRatioF()));
    } else if (!m_row.lead.isEmpty()) {
        painter.setPen(color(Ink::secondary, palette()));
        painter.setFont(leadFont());
        // Aligned to the title's baseline.
        const int baseline = y + (m_columns.areBeside && !m_row.title.isEmpty() ? titleMetrics.ascent()
                                                                                : leadMetrics.ascent());
        const int left =
            isLeftToRight() ? control::rowInset : width() - control::rowInset - std::min(leadWidth(), inside);
        painter.setLayoutDirection(m_row.lead.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        painter.drawText(left, baseline, leadMetrics.elidedText(m_row.lead, Qt::ElideRight, inside));
    }
    if (!m_columns.areBeside && leadWidth() > 0) {
        y += leadMetrics.height();
    }
    const auto paint = [&](const QString &text, const QFont &font, Ink inkOfText) {
        painter.setPen(color(inkOfText, palette()));
        paintParagraph(painter, {textLeft, y}, room, text, font, layoutDirection());
        y += paragraphHeight(text, font, room);
    };
    paint(m_row.title, titleFont(), Ink::primary);
    paint(m_row.detail, detailFont(), Ink::secondary);
    paint(m_row.problem, detailFont(), ink(m_row.tone));
    if (showsFocus(*this)) {
        paintFocusRing(painter, rect(), control::cornerRadius, palette());
    }
}

void DebugRow::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
    Q_EMIT focused();
}

void DebugRow::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

void DebugRow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        forgetMeasures();
    }
}

void DebugRow::forgetMeasures()
{
    m_leadWidth = -1;
    m_measuredWidth = -1;
}

} // namespace corvane
