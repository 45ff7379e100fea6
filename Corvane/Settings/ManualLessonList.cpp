// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/ManualLessonList.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/ElidedText.h"
#include "Corvane/Look/FlowRow.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Settings/ManualLessonForm.h"

#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane {

/// A divider, the platform's symbol, the name above the start and the length, and the button.
class ManualLessonRow final : public QWidget {
public:
    explicit ManualLessonRow(const ManualLessonEntry &entry, const QLocale &locale)
        : m_entry(entry)
        , m_remove(look::pushButton(u"Remove"_s, look::Role::bordered, u"trash"_s))
    {
        using namespace look;
        const QString platform = rawValue(entry.platform);
        const QString start = startText(entry.startTime, locale);
        const QString length = lengthText(entry.durationMinutes);
        auto *symbol = new SymbolView(corvane::symbolName(entry.platform), TextStyle::title, Ink::accent);
        look::setAccessibleRole(*symbol, QAccessible::Graphic);
        symbol->setAccessibleName(platform);
        symbol->setToolTip(platform);
        auto *name = new ElidedText(entry.studentName, TextStyle::body);
        // The buttons share one name, so each is described by its lesson.
        m_remove->setAccessibleDescription(u"%1, %2, %3, %4"_s.arg(name->text(), platform, start, length));

        auto *startLabel = new Text(start, TextStyle::subheadline, Ink::secondary);
        auto *lengthLabel = new Text(length, TextStyle::subheadline, Ink::secondary);
        startLabel->setPrefersOneLine();
        lengthLabel->setPrefersOneLine();
        auto *times =
            new FlowRow(space::medium, space::hair, FlowRow::Ends::together, {startLabel, lengthLabel});
        auto *line = row(space::medium, {symbol, column(space::hair, {name, times}), m_remove});
        line->setStretch(1, 1);
        setLayout(column(space::small, {new Divider, line}));
    }

    [[nodiscard]] const ManualLessonEntry &entry() const { return m_entry; }
    [[nodiscard]] QPushButton *removeButton() const { return m_remove; }

private:
    ManualLessonEntry m_entry;
    QPushButton *m_remove;
};

ManualLessonList::ManualLessonList(QWidget &before, QWidget *parent)
    : QWidget(parent)
    , m_before(before)
    , m_column(look::column(look::space::small, {}))
{
    setLayout(m_column);
    setVisible(false);
}

ManualLessonRow *ManualLessonList::makeRow(const ManualLessonEntry &entry)
{
    auto *row = new ManualLessonRow(entry, locale());
    connect(row->removeButton(), &QAbstractButton::clicked, this, [this, row] {
        const auto place = std::ranges::find(m_rows, row);
        if (place != m_rows.end()) { // false if a removed row's button is pressed again
            Q_EMIT removeRequested(static_cast<std::size_t>(place - m_rows.begin()));
        }
    });
    return row;
}

void ManualLessonList::setEntries(const std::vector<ManualLessonEntry> &entries)
{
    // Only the rows between the unchanged ones at the beginning and at the end are replaced.
    const auto stays = [&](const ManualLessonRow *row, const ManualLessonEntry &entry) {
        return row->entry() == entry;
    };
    const std::size_t shorter = std::min(m_rows.size(), entries.size());
    std::size_t first = 0;
    while (first < shorter && stays(m_rows[first], entries[first])) {
        ++first;
    }
    std::size_t last = 0;
    while (last < shorter - first &&
           stays(m_rows[m_rows.size() - 1 - last], entries[entries.size() - 1 - last])) {
        ++last;
    }

    bool hadFocus = false;
    while (m_rows.size() > first + last) {
        ManualLessonRow *row = m_rows[first];
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(first));
        hadFocus = hadFocus || row->isAncestorOf(focusWidget());
        m_column->removeWidget(row);
        row->hide();
        row->deleteLater(); // its button may be handling the click
    }
    QWidget *before = first > 0 ? m_rows[first - 1]->removeButton() : &m_before;
    for (std::size_t index = first; index + last < entries.size(); ++index) {
        ManualLessonRow *row = makeRow(entries[index]);
        m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(index), row);
        m_column->insertWidget(static_cast<int>(index), row);
        row->show(); // the layout would show it later
        // Puts an added row in its place in the tab order. Before the list is in its window, the tab order
        // follows the layout anyway.
        if (before->window() == window()) {
            QWidget::setTabOrder(before, row->removeButton());
        }
        before = row->removeButton();
    }
    setVisible(!m_rows.empty());
    if (hadFocus) {
        if (m_rows.empty()) {
            Q_EMIT focusLeft();
        } else {
            m_rows[std::min(first, m_rows.size() - 1)]->removeButton()->setFocus(Qt::OtherFocusReason);
        }
    }
}

QWidget *ManualLessonList::rowOf(std::size_t index) const
{
    return m_rows.at(index);
}

} // namespace corvane
