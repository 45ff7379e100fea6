// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/ScheduleStatusView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Services/ScheduleStatus.h"
#include "Corvane/Utilities/Spawn.h"
#include "Corvane/Views/LessonScheduleList.h"

#include <QScrollBar>
#include <QShowEvent>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

using namespace look;

ScheduleStatusView::ScheduleStatusView(MenuBarViewModel &viewModel, QWidget *parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_title(heading(new Text(scheduleStatus::title(), TextStyle::headline, QFont::DemiBold)))
    , m_picker(new SegmentedControl(u"Schedule view"_s, {u"Compact"_s, u"All today"_s}))
    , m_header(row(space::small, {m_title, Spacer{}, m_picker}))
    , m_nothing(new Text(u"No lessons in Apple Calendar today"_s, TextStyle::subheadline, Ink::secondary))
    , m_list(new LessonScheduleList)
    , m_scroll(new ScrollView(scheduleStatus::title(), m_list))
{
    m_title->setWordWrap(false);
    auto *surface = new Surface(
        menu::scheduleRadius, [](const QPalette &palette) { return palette.color(QPalette::Window); },
        padded({menu::schedulePadding, menu::schedulePadding, menu::schedulePadding, menu::schedulePadding},
               column(menu::scheduleSpacing, {m_header, m_nothing, m_scroll})));
    setLayout(column(0, {surface}));

    connect(m_picker, &SegmentedControl::selectionChanged, this,
            [this](int index) { setShowsAllLessons(index == 1); });
    connect(m_list, &LessonScheduleList::heightChanged, this, &ScheduleStatusView::sizeArea);
    const auto follow = [this] {
        if (isVisible()) {
            refresh();
        }
    };
    connect(&m_viewModel, &MenuBarViewModel::lessonsChanged, this, follow);
    connect(&m_viewModel, &MenuBarViewModel::currentActionChanged, this, follow);
    arrangeHeader();
    refresh();
}

void ScheduleStatusView::refresh()
{
    const Date now = currentDate();
    const std::vector<Lesson> schedule =
        scheduleStatus::scheduleLessons(m_viewModel.lessons(), m_viewModel.currentAction());
    const std::vector<Lesson> visible = scheduleStatus::visibleLessons(schedule, now, m_showsAllLessons);
    m_list->setLessons(visible, now, scheduleStatus::nextLesson(schedule, now));
    m_nothing->setVisible(visible.empty());
    m_scroll->setVisible(!visible.empty());
    sizeArea();
}

void ScheduleStatusView::sizeArea()
{
    // Room for three rows; with a larger desktop font they are still shown without scrolling.
    if (!m_showsAllLessons) {
        m_compactHeight = std::max(menu::compactHeight, m_list->minimumHeight());
    }
    m_scroll->setFixedHeight(m_showsAllLessons ? std::max(menu::allTodayHeight, m_compactHeight)
                                               : m_compactHeight);
}

void ScheduleStatusView::setShowsAllLessons(bool showsAllLessons)
{
    m_showsAllLessons = showsAllLessons;
    refresh();
    if (!showsAllLessons) {
        return;
    }
    // Start at the lessons that were visible before, not at the morning.
    const std::vector<Lesson> schedule =
        scheduleStatus::scheduleLessons(m_viewModel.lessons(), m_viewModel.currentAction());
    const std::vector<Lesson> compact = scheduleStatus::visibleLessons(schedule, currentDate(), false);
    if (!compact.empty()) {
        // The area would learn its content's height only on the next turn of the event loop.
        m_list->resize(m_list->width(), m_list->minimumHeight());
        m_scroll->verticalScrollBar()->setValue(m_list->topOf(compact.front()));
    }
}

void ScheduleStatusView::arrangeHeader()
{
    // With a large desktop font, the segmented control moves below the title, so that the title is not cut.
    m_picker->setFixedWidth(std::max(menu::pickerWidth, m_picker->layout()->minimumSize().width()));
    const int room = width() - 2 * menu::schedulePadding;
    const bool isBeside = m_title->sizeHint().width() + space::small + m_picker->width() <= room;
    m_header->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void ScheduleStatusView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        refresh();
        spawn(m_viewModel.reloadLessons());
    }
}

bool ScheduleStatusView::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    // Sent whenever the width of the title or the segmented control changes.
    if (event->type() == QEvent::LayoutRequest) {
        arrangeHeader();
    }
    return isHandled;
}

void ScheduleStatusView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrangeHeader();
}

} // namespace corvane
