// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/DebugWindowView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/FlowRow.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Scrolling.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Utilities/DebugLogService.h"
#include "Corvane/Views/DebugRowList.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QPushButton>
#include <QScrollArea>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

using namespace look;

DebugWindowView::DebugWindowView(const MenuBarViewModel &viewModel, const DebugSources &sources,
                                 LinkOpener openLink, QWidget *parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_sources(sources)
    , m_openLink(std::move(openLink))
    , m_told(new Text(u"A copied report shows only the initials of students."_s, TextStyle::subheadline,
                      Ink::secondary))
{
    auto *cards = column(settings::spacing,
                         {header(), card(m_snapshot, debugReport::snapshotSection(), u"info.circle.fill"_s),
                          card(m_calendars, debugReport::calendarSection(), u"calendar"_s),
                          card(m_notLessons, debugReport::notLessonSection(), u"questionmark.circle"_s),
                          card(m_log, debugReport::logSection(), u"doc.text"_s, true)});
    cards->addStretch(1);
    auto *content = new QWidget;
    content->setMaximumWidth(settings::columnWidth);
    content->setLayout(
        padded({settings::padding, settings::padding, settings::padding, settings::padding}, cards));
    m_page = scrolling(content);
    setLayout(column(0, {m_page}));
    followDesktopFont(*this);
    follow();
}

QWidget *DebugWindowView::header()
{
    auto *header = new QWidget;
    auto *texts = column(space::hair,
                         {heading(new Text(u"Debug Window"_s, TextStyle::title, QFont::Bold)),
                          new Text(u"What Quillet sees at this moment."_s, TextStyle::body, Ink::secondary)});
    auto *line =
        row(space::medium,
            {new SymbolView(u"wrench.and.screwdriver.fill"_s, TextStyle::largeTitle, Ink::accent), texts});
    line->setStretch(1, 1);
    auto *copy = pushButton(u"Copy Report"_s, Role::prominent, u"doc.on.clipboard"_s);
    connect(copy, &QAbstractButton::clicked, this, &DebugWindowView::copyReport);
    auto *open = pushButton(u"Open Log"_s, Role::bordered, u"doc.text"_s);
    connect(open, &QAbstractButton::clicked, this, &DebugWindowView::openLog);
    header->setLayout(column(settings::spacing,
                             {line, column(space::small, {new FlowRow(space::small, space::small,
                                                                      FlowRow::Ends::together, {copy, open}),
                                                          m_told})}));
    return header;
}

QWidget *DebugWindowView::card(Part &part, const debugReport::Section &section, const QString &symbolName,
                               bool isFinePrint)
{
    part.list = new DebugRowList(section.title, isFinePrint ? TextStyle::caption : TextStyle::body);
    part.nothing = new Text(section.nothing, TextStyle::subheadline, Ink::secondary);
    part.nothing->setContentsMargins(control::rowInset, 0, control::rowInset, 0);
    part.nothing->hide();
    connect(part.list, &DebugRowList::rowFocused, this,
            [this](QWidget *row) { m_page->ensureWidgetVisible(row, 0, space::large); });
    // Rows are highlighted slightly beyond their texts, which align with the heading.
    auto *title = padded({control::rowInset, 0, control::rowInset, 0},
                         label(new SymbolView(symbolName, TextStyle::headline, Ink::accent),
                               heading(new Text(section.title, TextStyle::headline))));
    constexpr int sides = card::padding - control::rowInset;
    auto *inside = padded({sides, card::padding, sides, card::padding},
                          column(space::small, {title, part.nothing, part.list}));
    auto *surface = new Surface(card::cornerRadius, cardColor, inside);
    surface->setAccessibleName(section.title);
    return surface;
}

void DebugWindowView::follow()
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(1s);
    connect(&m_pause, &QTimer::timeout, this, &DebugWindowView::refresh);
    connect(&m_viewModel, &MenuBarViewModel::debugSnapshotChanged, this, [this] { setStale(m_snapshot); });
    m_sources.calendars.addViewer(*this);
    connect(&m_sources.calendars, &CalendarMonitor::changed, this, [this] {
        setStale(m_calendars);
        setStale(m_notLessons);
    });
    connect(&m_sources.log, &DebugLogService::latestLinesChanged, this, [this] { setStale(m_log); });
}

void DebugWindowView::setStale(Part &part)
{
    part.isStale = true;
    // Queued, so that simultaneous changes are shown together.
    if (!m_pause.isActive()) {
        QMetaObject::invokeMethod(this, &DebugWindowView::refresh, Qt::QueuedConnection);
    }
}

void DebugWindowView::refresh()
{
    const bool isStale = m_snapshot.isStale || m_calendars.isStale || m_notLessons.isStale || m_log.isStale;
    if (!isStale || m_pause.isActive() || !isVisible() || window()->isMinimized()) {
        return;
    }
    m_pause.start();
    if (std::exchange(m_snapshot.isStale, false)) {
        setRows(m_snapshot, debugReport::snapshotRows(m_viewModel.debugSnapshot(), locale()));
    }
    if (std::exchange(m_calendars.isStale, false)) {
        setRows(m_calendars,
                debugReport::calendarRows(m_sources.calendars.calendars(), currentDate(), locale()));
    }
    if (std::exchange(m_notLessons.isStale, false)) {
        setRows(m_notLessons,
                debugReport::notLessonRows(m_sources.calendars.events(), m_sources.parser, locale()));
    }
    if (std::exchange(m_log.isStale, false)) {
        setRows(m_log, debugReport::logRows(m_sources.log.latestLines()));
    }
}

void DebugWindowView::setRows(Part &part, const std::vector<debugReport::Row> &rows)
{
    part.list->setRows(rows);
    part.list->setVisible(!rows.empty());
    part.nothing->setVisible(rows.empty());
}

void DebugWindowView::copyReport()
{
    const debugReport::Contents contents{.snapshot = m_viewModel.debugSnapshot(),
                                         .lessons = m_viewModel.lessons(),
                                         .calendars = m_sources.calendars.calendars(),
                                         .events = m_sources.calendars.events(),
                                         .logLines = m_sources.log.latestLines(),
                                         .now = currentDate()};
    QGuiApplication::clipboard()->setText(debugReport::text(contents, m_sources.parser, locale()));
    tell(u"The report is on the clipboard. It shows only the initials of students."_s);
}

void DebugWindowView::openLog()
{
    if (!m_openLink(m_sources.log.logURL())) {
        tell(u"The log could not be opened."_s);
    }
}

void DebugWindowView::tell(const QString &text)
{
    m_told->setText(text);
    announce(*m_told, text);
}

void DebugWindowView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void DebugWindowView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        refresh();
    }
}

} // namespace corvane
