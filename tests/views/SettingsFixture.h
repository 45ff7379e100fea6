// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/ManualLessonList.h"
#include "Corvane/Settings/SettingsView.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Pictures.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/ViewWalk.h"

#include <qcoro/qcorotimer.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QScrollArea>
#include <QSettings>
#include <QStringList>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <QUuid>

#include <chrono>
#include <memory>
#include <vector>

namespace corvane {

/// The settings window on a Saturday in November. A test class derives from it for each subject of the
/// window.
class SettingsFixture : public QObject {
    Q_OBJECT

protected:
    static constexpr Date saturday = dateSince1970(1'795'257'017.5); // Saturday, 2026-11-21 10:30:17.5 UTC
    static constexpr Date wholeMinute = dateSince1970(1'795'257'000);

    [[nodiscard]] static ManualLessonEntry entry(const QString &name,
                                                 TeachingPlatform platform = TeachingPlatform::zoom,
                                                 double secondsFromNow = 3600, qint64 minutes = 45)
    {
        return {.id = QUuid::createUuid(),
                .studentName = name,
                .platform = platform,
                .startTime = wholeMinute + Seconds{secondsFromNow},
                .durationMinutes = minutes};
    }

    static inline const QString longStudentName =
        QStringLiteral("Maximiliane Konstantina Theodora ").repeated(7).left(200);

    [[nodiscard]] static std::vector<ManualLessonEntry> sampleLessons()
    {
        return {entry(QStringLiteral("Anna"), TeachingPlatform::onlineLesson, 1800, 15),
                entry(longStudentName, TeachingPlatform::lingoAce, 86'400),
                entry(QStringLiteral("王小明 (二班)"), TeachingPlatform::microsoftTeams, 90'000, 60),
                entry(QStringLiteral("محمد الأمين (B2)"), TeachingPlatform::zoom, 864'000, 20),
                entry(QStringLiteral("<b>Eve</b> &amp;\n\t\u0007\u202EevE"), TeachingPlatform::googleMeet,
                      -86'400, 7)};
    }

    [[nodiscard]] static std::vector<ManualLessonEntry> aHundredLessons()
    {
        std::vector<ManualLessonEntry> entries;
        entries.reserve(100);
        for (int index = 0; index < 100; ++index) {
            entries.push_back(entry(QStringLiteral("Student %1").arg(index + 1),
                                    allTeachingPlatforms.at(static_cast<std::size_t>(index) % 5),
                                    index * 1800));
        }
        return entries;
    }

    /// The settings window's content, with a record of its requests.
    struct SettingsRoom {
        explicit SettingsRoom(const std::vector<ManualLessonEntry> &lessons = {})
        {
            if (!lessons.empty()) {
                settings.setManualLessons(lessons);
            }
            view = std::make_unique<SettingsView>(
                settings,
                [this]() -> QCoro::Task<void> {
                    ++reloads;
                    if (loadTakes > 0) {
                        co_await QCoro::sleepFor(std::chrono::milliseconds(loadTakes));
                    }
                },
                [this](const WindowName &window) { opened << window.identifier + u'|' + window.title; });
            view->resize(620, 700);
        }

        void show() const
        {
            view->show();
            QTRY_VERIFY(view->isActiveWindow());
        }

        [[nodiscard]] QLineEdit *studentName() const
        {
            for (auto *field : view->findChildren<QLineEdit *>()) {
                if (field->accessibleName() == QStringLiteral("Student name")) {
                    return field;
                }
            }
            return nullptr;
        }
        [[nodiscard]] QAbstractButton *button(const QString &text) const
        {
            return viewWalk::button(*view, text);
        }
        [[nodiscard]] QComboBox *picker(const QString &name) const
        {
            for (auto *picker : view->findChildren<QComboBox *>()) {
                if (picker->accessibleName() == name) {
                    return picker;
                }
            }
            return nullptr;
        }
        [[nodiscard]] QCheckBox *toggle(const QString &text) const
        {
            return qobject_cast<QCheckBox *>(button(text));
        }
        [[nodiscard]] QDateTimeEdit *start() const { return view->findChild<QDateTimeEdit *>(); }
        [[nodiscard]] QScrollArea *page() const { return view->findChild<QScrollArea *>(); }
        [[nodiscard]] ManualLessonList *list() const { return view->findChild<ManualLessonList *>(); }
        [[nodiscard]] QVariant stored(const QString &key) const
        {
            return QSettings(file->path(), QSettings::IniFormat).value(key);
        }
        [[nodiscard]] const ManualLessonEntry &lastLesson() const { return settings.manualLessons().back(); }

        /// Clicks one of the start field's arrows.
        void step(QStyle::SubControl arrow) const
        {
            QStyleOptionSpinBox option;
            option.initFrom(start());
            const QRect area = start()->style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, start());
            QTest::mouseClick(start(), Qt::LeftButton, {}, area.center());
        }

        /// Chooses as a user does: opens the list and presses Return on an item.
        static void choose(QComboBox *picker, const QString &text)
        {
            picker->setFocus();
            picker->showPopup();
            const int row = picker->findText(text);
            QVERIFY(row >= 0);
            picker->view()->setCurrentIndex(picker->model()->index(row, 0));
            QTest::keyClick(picker->view(), Qt::Key_Return);
        }

        std::unique_ptr<TemporarySettings> file = std::make_unique<TemporarySettings>();
        FakeLoginItem loginItem;
        AppSettings settings{file->store(), file->store(), loginItem};
        int reloads = 0;
        int loadTakes = 0; ///< milliseconds
        QStringList opened;
        std::unique_ptr<SettingsView> view;
    };

private Q_SLOTS:
    void init()
    {
        pictures::prepareApplication();
        m_clock = std::make_unique<ManualClock>(saturday);
    }
    void cleanup() { m_clock.reset(); }

private:
    std::unique_ptr<ManualClock> m_clock;
};

} // namespace corvane
