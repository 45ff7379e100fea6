// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/LessonScheduleList.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Views/LessonScheduleRow.h"

#include <QEvent>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

using namespace look;

namespace {

bool hasSameRow(const Lesson &one, const Lesson &other)
{
    return one.startTime == other.startTime && one.platform == other.platform &&
           one.studentName == other.studentName;
}

} // namespace

LessonScheduleList::LessonScheduleList(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(*this, QAccessible::List);
    setAccessibleName(u"Lessons"_s);
}

void LessonScheduleList::setLessons(const std::vector<Lesson> &lessons, Date now,
                                    const std::optional<Lesson> &next)
{
    std::vector<Entry> earlier = std::move(m_entries);
    m_entries.clear();
    bool isChanged = false;
    bool isRearranged = earlier.size() != lessons.size();
    // Both lists are ordered by time, so a match is at the front or close behind it.
    std::size_t front = 0;
    for (const Lesson &lesson : lessons) {
        std::size_t found = front;
        while (found < earlier.size() &&
               (earlier[found].row == nullptr || !hasSameRow(earlier[found].lesson, lesson))) {
            ++found;
        }
        LessonScheduleRow *row = nullptr;
        if (found < earlier.size()) {
            row = std::exchange(earlier[found].row, nullptr);
            isRearranged = isRearranged || found != m_entries.size();
        } else {
            row = new LessonScheduleRow(this);
            isRearranged = true;
        }
        while (front < earlier.size() && earlier[front].row == nullptr) {
            ++front;
        }
        isChanged = row->setLesson(lesson, now, next && next->id == lesson.id) || isChanged;
        m_entries.push_back({.lesson = lesson, .row = row});
    }
    for (const Entry &gone : earlier) {
        delete gone.row;
    }
    if (isRearranged) {
        // Assistive tools follow the order of the children; raise() makes a child the last.
        for (const Entry &entry : m_entries) {
            entry.row->raise();
            entry.row->show();
        }
    }
    if (isRearranged || isChanged) {
        arrange();
    }
}

std::vector<const LessonScheduleRow *> LessonScheduleList::rows() const
{
    std::vector<const LessonScheduleRow *> rows;
    std::ranges::transform(m_entries, std::back_inserter(rows), &Entry::row);
    return rows;
}

int LessonScheduleList::topOf(const Lesson &lesson) const
{
    const auto entry = std::ranges::find_if(
        m_entries, [&](const Entry &candidate) { return candidate.lesson.id == lesson.id; });
    return entry != m_entries.end() ? entry->row->y() : 0;
}

void LessonScheduleList::arrange()
{
    LessonScheduleRow::Columns columns;
    for (const Entry &entry : m_entries) {
        columns.time = std::max(columns.time, entry.row->timeWidth());
    }
    columns.areBeside = std::ranges::all_of(m_entries, [this, &columns](const Entry &entry) {
        return entry.row->fitsBeside(width(), columns.time);
    });
    int y = 0;
    for (const Entry &entry : m_entries) {
        entry.row->setColumns(columns);
        const int height = entry.row->sizeHint().height();
        entry.row->setGeometry(0, y, width(), height);
        y += height + menu::rowSpacing;
    }
    const int height = std::max(0, y - menu::rowSpacing);
    if (height != minimumHeight()) {
        setMinimumHeight(height);
        Q_EMIT heightChanged();
    }
}

void LessonScheduleList::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void LessonScheduleList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LocaleChange) {
        arrange();
    }
}

} // namespace corvane
