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

/// Today's schedule: a few lessons about the present moment, or all of the day's, each with how it stands.
/// It follows the view model while it is shown; each time it appears, the lessons are loaded anew.
class ScheduleStatusView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` is borrowed.
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
    int m_compactHeight = 0; ///< of the area of the rows when the compact list was last shown
    look::Text *m_title;
    look::SegmentedControl *m_picker;
    QBoxLayout *m_header;
    look::Text *m_nothing;
    LessonScheduleList *m_list;
    look::ScrollView *m_scroll;
};

} // namespace corvane
