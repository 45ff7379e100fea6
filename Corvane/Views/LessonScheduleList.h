// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace corvane {

class LessonScheduleRow;

/// The rows of today's schedule, without scrolling. A row belongs to a lesson by student, platform and start,
/// not by the lesson's identifier, which is new after every load. Unchanged rows are not redrawn.
class LessonScheduleList final : public QWidget {
    Q_OBJECT

public:
    explicit LessonScheduleList(QWidget *parent = nullptr);

    /// Shows `lessons` in this order, with their status at `now`; `next` is the schedule's next lesson.
    void setLessons(const std::vector<Lesson> &lessons, Date now, const std::optional<Lesson> &next);

    /// The rows, from top to bottom.
    [[nodiscard]] std::vector<const LessonScheduleRow *> rows() const;

    /// The y position of the row of `lesson`, found by its identifier; 0 if there is none.
    [[nodiscard]] int topOf(const Lesson &lesson) const;

Q_SIGNALS:
    /// The total height of the rows, minimumHeight(), has changed.
    void heightChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Entry {
        Lesson lesson;
        LessonScheduleRow *row;
    };

    void arrange();

    std::vector<Entry> m_entries;
};

} // namespace corvane
