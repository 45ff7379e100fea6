// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/ScheduleStatus.h"

#include <QWidget>

namespace corvane {

/// One lesson in today's schedule: its time, student, platform and status. For a screen reader it is one list
/// item. Its height depends on the font.
class LessonScheduleRow final : public QWidget {
    Q_OBJECT

public:
    /// The columns that the rows of a list share.
    struct Columns {
        int time = 0;          ///< width of the column of times
        bool areBeside = true; ///< otherwise the names are below the time and the status, at full width

        friend bool operator==(const Columns &, const Columns &) = default;
    };

    explicit LessonScheduleRow(QWidget *parent = nullptr);

    /// Shows `lesson` with its status at `now`; `isNext` marks the schedule's next lesson. Returns whether
    /// the row looks different from before; if not, nothing is redrawn.
    bool setLesson(const Lesson &lesson, Date now, bool isNext);

    void setColumns(Columns columns);

    /// The width of the row's time in its boldest form.
    [[nodiscard]] int timeWidth() const;

    /// Whether time, names and status fit side by side in a row of `width` points with a time column of
    /// `timeWidth`.
    [[nodiscard]] bool fitsBeside(int width, int timeWidth) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Fonts;
    struct Lines;

    /// The row's texts and state; equal ones look equal.
    struct Texts {
        QString time;
        QString student;
        QString platform;
        QString badge;
        QString status;
        scheduleStatus::Badge badgeKind = scheduleStatus::Badge::none;
        scheduleStatus::Background background = scheduleStatus::Background::other;
        bool isNext = false;
        bool isEmphasized = false;

        friend bool operator==(const Texts &, const Texts &) = default;
    };

    [[nodiscard]] Fonts fonts() const;
    [[nodiscard]] Lines lines(const Fonts &fonts) const;
    void fit();

    QString m_studentName; ///< the name as given, before it was made a single line
    Texts m_texts;
    Columns m_columns;
    QString m_shownStudent;  ///< the student's name, cut with an ellipsis if too long
    QString m_shownPlatform; ///< likewise for the platform
};

} // namespace corvane
