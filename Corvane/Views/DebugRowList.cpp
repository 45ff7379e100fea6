// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/DebugRowList.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Views/DebugRow.h"

#include <QEvent>
#include <QKeyEvent>

#include <algorithm>

namespace corvane {

using debugReport::Row;

namespace {

/// The largest share of the list's width that the lead may take beside the texts.
constexpr double widestLead = 0.4;

} // namespace

DebugRowList::DebugRowList(const QString &label, look::TextStyle style, QWidget *parent)
    : QWidget(parent)
    , m_style(style)
{
    look::setAccessibleRole(*this, QAccessible::List);
    setAccessibleName(label);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

DebugRow *DebugRowList::makeRow()
{
    auto *row = new DebugRow(m_style, this);
    look::setAccessibleRole(*row, QAccessible::ListItem);
    row->setFocusPolicy(Qt::ClickFocus);
    connect(row, &DebugRow::focused, this, [this, row] {
        setCurrent(static_cast<std::size_t>(std::ranges::find(m_rows, row) - m_rows.begin()));
        Q_EMIT rowFocused(row);
    });
    return row;
}

void DebugRowList::dropLeadingRows(const std::vector<Row> &rows)
{
    // When the oldest rows are gone, as in a log, the remaining rows are kept.
    const auto isFirst = [&](const DebugRow *row) { return row->row() == rows.front(); };
    const auto first = rows.empty() ? m_rows.end() : std::ranges::find_if(m_rows, isFirst);
    const auto gone = first == m_rows.end() ? 0 : first - m_rows.begin();
    const auto kept = static_cast<std::size_t>(m_rows.end() - first);
    const bool isShifted =
        gone > 0 && kept <= rows.size() &&
        std::equal(first, m_rows.end(), rows.begin(),
                   [](const DebugRow *row, const Row &wanted) { return row->row() == wanted; });
    if (!isShifted) {
        return;
    }
    for (auto row = m_rows.begin(); row != first; ++row) {
        delete *row;
    }
    m_rows.erase(m_rows.begin(), first);
    m_current -= std::min(m_current, static_cast<std::size_t>(gone));
}

void DebugRowList::setRows(const std::vector<Row> &rows)
{
    const bool same = std::equal(m_rows.begin(), m_rows.end(), rows.begin(), rows.end(),
                                 [](const DebugRow *row, const Row &wanted) { return row->row() == wanted; });
    if (same) {
        return;
    }
    const bool hadFocus = isAncestorOf(focusWidget());
    dropLeadingRows(rows);
    while (m_rows.size() > rows.size()) {
        delete m_rows.back();
        m_rows.pop_back();
    }
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (index == m_rows.size()) {
            m_rows.push_back(makeRow());
        }
        m_rows[index]->setRow(rows[index]);
    }
    setCurrent(std::min(m_current, m_rows.empty() ? 0 : m_rows.size() - 1));
    if (hadFocus && !m_rows.empty() && !isAncestorOf(focusWidget())) {
        m_rows[m_current]->setFocus(Qt::OtherFocusReason);
    }
    arrange();
    if (heightForWidth(width()) != height()) {
        updateGeometry();
    }
}

void DebugRowList::setCurrent(std::size_t index)
{
    m_current = index;
    for (std::size_t other = 0; other < m_rows.size(); ++other) {
        m_rows[other]->setFocusPolicy(other == index ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void DebugRowList::divide(int width) const
{
    DebugRow::Columns columns;
    for (const DebugRow *row : m_rows) {
        columns.lead = std::max(columns.lead, row->leadWidth());
    }
    columns.areBeside = columns.lead <= width * widestLead;
    for (DebugRow *row : m_rows) {
        row->setColumns(columns);
    }
}

int DebugRowList::heightForWidth(int width) const
{
    divide(width);
    int height = 0;
    for (const DebugRow *row : m_rows) {
        height += row->heightForWidth(width);
    }
    return height;
}

QSize DebugRowList::sizeHint() const
{
    return {minimumSizeHint().width(), heightForWidth(std::max(width(), 1))};
}

QSize DebugRowList::minimumSizeHint() const
{
    // Text wraps at any width, but a line should hold a few letters.
    return {8 * QFontMetrics(look::font(m_style)).averageCharWidth(), 0};
}

void DebugRowList::arrange()
{
    divide(width());
    int y = 0;
    for (DebugRow *row : m_rows) {
        const int height = row->heightForWidth(width());
        row->setGeometry(0, y, width(), height);
        row->show();
        y += height;
    }
}

void DebugRowList::keyPressEvent(QKeyEvent *event)
{
    const std::size_t last = m_rows.empty() ? 0 : m_rows.size() - 1;
    std::size_t wanted = m_current;
    switch (event->key()) {
    case Qt::Key_Up:
        wanted = m_current == 0 ? 0 : m_current - 1;
        break;
    case Qt::Key_Down:
        wanted = std::min(m_current + 1, last);
        break;
    case Qt::Key_Home:
        wanted = 0;
        break;
    case Qt::Key_End:
        wanted = last;
        break;
    default:
        break;
    }
    if (wanted == m_current) {
        QWidget::keyPressEvent(event);
        return;
    }
    m_rows[wanted]->setFocus(Qt::TabFocusReason);
}

void DebugRowList::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void DebugRowList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        arrange();
    }
}

} // namespace corvane
