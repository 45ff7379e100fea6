// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/FlowRow.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace corvane::look {

namespace {

/// The size of an item on a line of `width` points: wider text wraps and becomes taller.
QSize sizeOf(const QLayoutItem &item, int width)
{
    const QSize hint = item.sizeHint();
    if (hint.width() <= width) {
        return hint;
    }
    return {width, item.hasHeightForWidth() ? item.heightForWidth(width) : hint.height()};
}

} // namespace

FlowRow::FlowRow(int spacing, int lineSpacing, Ends ends, std::initializer_list<QWidget *> widgets)
    : m_lineSpacing(lineSpacing)
    , m_ends(ends)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
    for (QWidget *widget : widgets) {
        addWidget(widget);
    }
}

FlowRow::~FlowRow() = default;

void FlowRow::addItem(QLayoutItem *item)
{
    m_items.emplace_back(item);
}

int FlowRow::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem *FlowRow::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem *FlowRow::takeAt(int index)
{
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    const auto place = m_items.begin() + index;
    QLayoutItem *item = place->release();
    m_items.erase(place);
    return item;
}

int FlowRow::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

QSize FlowRow::sizeHint() const
{
    QSize size(0, 0);
    for (const auto &item : m_items) {
        const QSize hint = item->sizeHint();
        size = QSize(size.width() + hint.width() + (size.width() > 0 ? spacing() : 0),
                     std::max(size.height(), hint.height()));
    }
    return size;
}

QSize FlowRow::minimumSize() const
{
    QSize size(0, 0);
    for (const auto &item : m_items) {
        size = size.expandedTo(item->minimumSize());
    }
    return size;
}

void FlowRow::setGeometry(const QRect &area)
{
    QLayout::setGeometry(area);
    (void)arrange(area, true);
}

int FlowRow::arrange(const QRect &area, bool isMoving) const
{
    const Qt::LayoutDirection direction =
        parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int top = area.top();
    for (std::size_t first = 0; first < m_items.size();) {
        // As many as fit on the line, but at least one.
        int width = sizeOf(*m_items[first], area.width()).width();
        int height = sizeOf(*m_items[first], area.width()).height();
        std::size_t end = first + 1;
        for (; end < m_items.size(); ++end) {
            const QSize hint = sizeOf(*m_items[end], area.width());
            if (width + spacing() + hint.width() > area.width()) {
                break;
            }
            width += spacing() + hint.width();
            height = std::max(height, hint.height());
        }
        int left = area.left() + (m_ends == Ends::centred ? std::max(0, area.width() - width) / 2 : 0);
        for (std::size_t index = first; isMoving && index < end; ++index) {
            const QSize size = sizeOf(*m_items[index], area.width());
            if (m_ends == Ends::apart && index == end - 1 && index > first) {
                left = area.right() + 1 - size.width();
            }
            const QRect place(QPoint(left, top + (height - size.height()) / 2), size);
            m_items[index]->setGeometry(QStyle::visualRect(direction, area, place));
            left += size.width() + spacing();
        }
        top += height + (end < m_items.size() ? m_lineSpacing : 0);
        first = end;
    }
    return top - area.top();
}

} // namespace corvane::look
