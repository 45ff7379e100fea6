// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/DebugReport.h"

#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <functional>

class QScrollArea;

namespace corvane {

namespace look {
class Text;
} // namespace look

class DebugLogService;
class DebugRowList;
class MenuBarViewModel;

/// What the debug window tells of; borrowed.
struct DebugSources {
    const CalendarMonitor &calendars;
    const CalendarLessonParser &parser;
    const DebugLogService &log;
};

/// The content of the debug window: what the program believes at this moment, how its calendars fare, why
/// events of today are no lessons, and the latest lines of the log. It follows them while it is seen, once a
/// second at most.
class DebugWindowView final : public QWidget {
    Q_OBJECT

public:
    /// Has the desktop open something with its own program for it; whether there was one.
    using Opener = std::function<bool(const QUrl &)>;

    /// `viewModel` is borrowed.
    DebugWindowView(const MenuBarViewModel &viewModel, const DebugSources &sources, Opener openLink,
                    QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A list of rows on a card, and what stands there while it has none.
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
    Opener m_openLink;
    Part m_snapshot;
    Part m_calendars;
    Part m_notLessons;
    Part m_log;
    look::Text *m_told;
    QScrollArea *m_page;
    QTimer m_pause; ///< runs after each refresh: until it ends there is no other
};

} // namespace corvane
