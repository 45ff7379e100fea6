// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/ScheduleStatus.h"

#include <QWidget>

namespace corvane {

/// One lesson in today's schedule: its time, student and platform, and how it stands. For a
/// screen reader it is one element of a list. It is as high as its font needs.
class LessonScheduleRow final : public QWidget {
    Q_OBJECT

public:
    /// How the rows of one list divide their width, so that their texts stand in columns.
    struct Columns {
        int time = 0;          ///< the width of the column of times
        bool areBeside = true; ///< else the names stand below the time and the status, across the row

        friend bool operator==(const Columns &, const Columns &) = default;
    };

    explicit LessonScheduleRow(QWidget *parent = nullptr);

    /// Shows `lesson` as it stands at `now`; `isNext` tells whether it is the schedule's next one. Tells
    /// whether it looks different from before; otherwise nothing is drawn anew.
    bool setLesson(const Lesson &lesson, Date now, bool isNext);

    /// Divides the width so from now on.
    void setColumns(Columns columns);

    /// The width of the time of the row, however much it stands out.
    [[nodiscard]] int timeWidth() const;

    /// Whether time, names and status have room beside one another in a row of `width` points, with a column
    /// of times of `timeWidth`.
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

    /// What the row says; what is equal looks equal.
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

    QString m_studentName; ///< as it was given
    Texts m_texts;
    Columns m_columns;
    QString m_shownStudent;  ///< the student's name, or its beginning and an ellipsis
    QString m_shownPlatform; ///< likewise
};

} // namespace corvane
