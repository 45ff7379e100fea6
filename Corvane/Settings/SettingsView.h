// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/ManualLessonForm.h"
#include "Corvane/Utilities/WindowNames.h"

#include <qcoro/qcorotask.h>

#include <QPointer>
#include <QWidget>

#include <functional>

class QLineEdit;
class QPushButton;
class QScrollArea;

namespace corvane {

class AppSettings;
class ManualLessonList;

namespace look {
class SymbolTurn;
}

/// The content of the settings window: cards in a scrolling column. Every change is saved at once, and
/// changes made elsewhere appear at once. A lesson that is typed but not added is lost with the view.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    using OpenWindow = std::function<void(const WindowName &window)>;

    /// Reloads today's lessons; the task ends when that is done.
    using ReloadLessons = std::function<QCoro::Task<void>()>;

    /// Calls `reloadLessons` when its button is pressed, and after a lesson was added or removed, so that the
    /// change takes effect at once. Borrows `settings`.
    SettingsView(AppSettings &settings, ReloadLessons reloadLessons, OpenWindow openWindow,
                 QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *header() const;
    [[nodiscard]] QWidget *calendarConnection();
    [[nodiscard]] QWidget *manualLessonEntry();
    [[nodiscard]] QWidget *remindersAndDisplay();
    [[nodiscard]] QWidget *help();

    static QCoro::Task<void> reload(QPointer<SettingsView> self);
    void addManualLesson();
    void removeManualLesson(std::size_t index);
    void openQuickStart();

    AppSettings &m_settings;
    ReloadLessons m_reloadLessons;
    OpenWindow m_openWindow;
    ManualLessonForm m_form;
    QLineEdit *m_studentName;
    look::SymbolTurn *m_reloading = nullptr;
    QPushButton *m_add;
    ManualLessonList *m_manualLessons;
    QScrollArea *m_page = nullptr;
};

} // namespace corvane
