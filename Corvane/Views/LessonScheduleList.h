// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace corvane {

class LessonScheduleRow;

/// The rows of today's schedule below one another, as high as they are together. A row is that of the same
/// lesson as long as student, platform and start are the same, whatever its identifier, which is a new one
/// after every load: what has not changed is not drawn anew.
class LessonScheduleList final : public QWidget {
    Q_OBJECT

public:
    explicit LessonScheduleList(QWidget *parent = nullptr);

    /// Shows `lessons`, in this order, as they stand at `now`; `next` is the schedule's next lesson.
    void setLessons(const std::vector<Lesson> &lessons, Date now, const std::optional<Lesson> &next);

    /// The rows from top to bottom.
    [[nodiscard]] std::vector<const LessonScheduleRow *> rows() const;

    /// Where the row of `lesson`, by its identifier, begins; 0 when there is none.
    [[nodiscard]] int topOf(const Lesson &lesson) const;

Q_SIGNALS:
    /// The rows together, minimumHeight(), have become higher or lower.
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
