// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Views/LessonScheduleList.h"
#include "Corvane/Views/LessonScheduleRow.h"
#include "Corvane/Views/MenuBarContentView.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewModelFixture.h"

#include <QAccessible>
#include <QImage>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

namespace corvane {

/// The bell's panel over a scripted schedule. A test class derives from it for each subject of the panel.
class MenuBarFixture : public QObject {
    Q_OBJECT

protected:
    /// Forty lessons of 25 minutes, one every half hour from 03:00 on.
    [[nodiscard]] static std::vector<Lesson> fullDay()
    {
        const QStringList students{QStringLiteral("Anna"),     QStringLiteral("Ben"),
                                   QStringLiteral("Class 2b"), QStringLiteral("Daniel Okafor"),
                                   QStringLiteral("Mei"),      QStringLiteral("Émile"),
                                   QStringLiteral("Sofía")};
        std::vector<Lesson> lessons;
        lessons.reserve(40);
        for (int number = 0; number < 40; ++number) {
            lessons.push_back(sampleLesson(students.at(number % students.size()),
                                           at("03:00:00") + minutes(30) * number, minutes(25),
                                           allTeachingPlatforms.at(static_cast<std::size_t>(number) % 5)));
        }
        return lessons;
    }

    /// The lessons as the next load returns them: the same, with new identifiers.
    [[nodiscard]] static std::vector<Lesson> loadedAnew(std::vector<Lesson> lessons)
    {
        for (Lesson &lesson : lessons) {
            lesson.id = QUuid::createUuid();
        }
        return lessons;
    }

    /// The panel's content, with a record of its requests.
    struct Fixture : ViewModelFixture {
        explicit Fixture(const char *time = "10:20:00") : ViewModelFixture(time) {}

        std::vector<WindowName> opened;
        std::vector<WindowName> openedBeside;
        int quits = 0;
        MenuActions actions{
            .hasWindow = [](const WindowName &) { return true; },
            .openWindow = [this](const WindowName &window) { opened.push_back(window); },
            .openWindowBeside = [this](const WindowName &window) { openedBeside.push_back(window); },
            .quit = [this] { ++quits; }};

        [[nodiscard]] std::unique_ptr<MenuBarContentView> view()
        {
            auto view = std::make_unique<MenuBarContentView>(*model, actions);
            view->resize(view->sizeHint());
            return view;
        }

        /// The view shown off screen: window system events would come at unpredictable times.
        [[nodiscard]] std::unique_ptr<MenuBarContentView> pictured()
        {
            auto view = this->view();
            view->setAttribute(Qt::WA_DontShowOnScreen);
            view->show();
            return view;
        }

        /// The view on the screen, with the keyboard focus.
        [[nodiscard]] std::unique_ptr<MenuBarContentView> shown()
        {
            auto view = this->view();
            view->show();
            view->activateWindow();
            return view;
        }
    };

    [[nodiscard]] static QImage pictureOf(QWidget &view)
    {
        QCoreApplication::processEvents();
        view.resize(view.sizeHint());
        QCoreApplication::processEvents();
        return view.grab().toImage();
    }

    static void showAllToday(const QWidget &view)
    {
        view.findChild<look::SegmentedControl *>()->setSelection(1);
    }

    [[nodiscard]] static LessonScheduleList &listOf(const QWidget &view)
    {
        return *view.findChild<LessonScheduleList *>();
    }

    [[nodiscard]] static QScrollBar &barOf(const QWidget &view)
    {
        return *view.findChild<look::ScrollView *>()->verticalScrollBar();
    }

    [[nodiscard]] static QAccessibleInterface &accessible(QObject *object)
    {
        return *QAccessible::queryAccessibleInterface(object);
    }

    /// What a screen reader reads for each row.
    [[nodiscard]] static QStringList rowTexts(const QWidget &view)
    {
        QStringList texts;
        for (const LessonScheduleRow *row : listOf(view).rows()) {
            texts << row->accessibleName();
        }
        return texts;
    }

    [[nodiscard]] static QPushButton &button(const QWidget &view, const QString &text)
    {
        const auto buttons = view.findChildren<QPushButton *>();
        return **std::ranges::find(buttons, text, [](const QPushButton *each) { return each->text(); });
    }

private Q_SLOTS:
    void cleanup()
    {
        pictures::prepareApplication();
        QLocale::setDefault(QLocale::c());
    }
};

} // namespace corvane
