// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/MenuBarViewModel.h"

#include <QWidget>

class QBoxLayout;

namespace corvane {

namespace look {
class ScrollView;
class SegmentedControl;
class Text;
} // namespace look

class LessonScheduleList;

/// Today's schedule: the lessons around the present moment, or all of the day, with their status. It follows
/// the view model while visible; each time it is shown, it reloads the lessons.
class ScheduleStatusView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` is borrowed and outlives the view.
    explicit ScheduleStatusView(MenuBarViewModel &viewModel, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void refresh();
    void sizeArea();
    void setShowsAllLessons(bool showsAllLessons);
    void arrangeHeader();

    MenuBarViewModel &m_viewModel;
    bool m_showsAllLessons = false;
    int m_compactHeight = 0; ///< of the rows' area when the compact list was last shown
    look::Text *m_title;
    look::SegmentedControl *m_picker;
    QBoxLayout *m_header;
    look::Text *m_nothing;
    LessonScheduleList *m_list;
    look::ScrollView *m_scroll;
};

} // namespace corvane
