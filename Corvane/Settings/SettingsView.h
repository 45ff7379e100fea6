// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/ManualLessonForm.h"

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

/// The content of the settings window: cards in a column that scrolls. Every change is saved at once, and a
/// change made elsewhere is shown at once. What is typed of a lesson not yet added is lost with the view.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    /// Opens the window of an identifier and a title.
    using OpenWindow = std::function<void(const QString &identifier, const QString &title)>;

    /// Reloads today's lessons; the task ends with that.
    using ReloadLessons = std::function<QCoro::Task<void>()>;

    /// `reloadLessons` is called by its button, and after a lesson was added or removed, so that it is
    /// followed at once. `settings` is borrowed.
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
