// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/ManualLessonForm.h"

#include <QWidget>

#include <functional>

class QLineEdit;
class QPushButton;
class QScrollArea;

namespace corvane {

class AppSettings;
class ManualLessonList;

/// The content of the settings window: cards in a column that scrolls. Every change is saved at once, and a
/// change made elsewhere is shown at once. What is typed of a lesson not yet added is lost with the view.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    /// Opens the window of an identifier and a title.
    using OpenWindow = std::function<void(const QString &identifier, const QString &title)>;

    /// `reloadLessons` is called by its button, and after a lesson was added or removed, so that it is
    /// followed at once. `settings` is borrowed.
    SettingsView(AppSettings &settings, std::function<void()> reloadLessons, OpenWindow openWindow,
                 QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *header() const;
    [[nodiscard]] QWidget *calendarConnection();
    [[nodiscard]] QWidget *manualLessonEntry();
    [[nodiscard]] QWidget *remindersAndDisplay();
    [[nodiscard]] QWidget *help();

    void addManualLesson();
    void removeManualLesson(std::size_t index);
    void openQuickStart();

    AppSettings &m_settings;
    std::function<void()> m_reloadLessons;
    OpenWindow m_openWindow;
    ManualLessonForm m_form;
    QLineEdit *m_studentName;
    QPushButton *m_add;
    ManualLessonList *m_manualLessons;
    QScrollArea *m_page = nullptr;
};

} // namespace corvane
