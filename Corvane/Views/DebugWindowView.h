// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/DebugReport.h"
#include "Corvane/Views/LinkOpener.h"

#include <QTimer>
#include <QWidget>

class QScrollArea;

namespace corvane {

namespace look {
class Text;
} // namespace look

class DebugLogService;
class DebugRowList;
class MenuBarViewModel;

/// The sources of the debug window; borrowed.
struct DebugSources {
    CalendarMonitor &calendars;
    const CalendarLessonParser &parser;
    const DebugLogService &log;
};

/// The content of the debug window: the program's current state, the state of its calendars, why events of
/// today are not lessons, and the latest log lines. It updates while it is visible, at most once a second.
class DebugWindowView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` is borrowed and outlives the view.
    DebugWindowView(const MenuBarViewModel &viewModel, const DebugSources &sources, LinkOpener openLink,
                    QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A list of rows on a card, and the text shown while it is empty.
    struct Part {
        DebugRowList *list = nullptr;
        look::Text *nothing = nullptr;
        bool isStale = true;
    };

    [[nodiscard]] QWidget *header();
    [[nodiscard]] QWidget *card(Part &part, const debugReport::Section &section, const QString &symbolName,
                                bool isFinePrint = false);
    void follow();
    void setStale(Part &part);
    void refresh();
    static void setRows(Part &part, const std::vector<debugReport::Row> &rows);
    void copyReport();
    void openLog();
    void tell(const QString &text);

    const MenuBarViewModel &m_viewModel;
    DebugSources m_sources;
    LinkOpener m_openLink;
    Part m_snapshot;
    Part m_calendars;
    Part m_notLessons;
    Part m_log;
    look::Text *m_told;
    QScrollArea *m_page;
    QTimer m_pause; ///< runs for a second after each refresh and delays the next one
};

} // namespace corvane
