// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Views/LessonScheduleRow.h"
#include "Corvane/Views/ScheduleStatusView.h"
#include "tests/support/Pictures.h"
#include "tests/views/MenuBarFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

struct Scene {
    const char *time = "10:20:00";
    std::vector<Lesson> lessons = {};
    bool isAllToday = false;
    bool hasFailed = false;
    Theme theme = Theme::light;
    double fontScale = 1;
    QString locale = u"C"_s;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

} // namespace

Q_DECLARE_METATYPE(Scene)

/// How the bell's panel looks.
class MenuBarLookTest final : public MenuBarFixture {
    Q_OBJECT

public:
    explicit MenuBarLookTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    int m_scaleFactor;

private Q_SLOTS:
    void itLooksAsItShould_data()
    {
        QTest::addColumn<Scene>("scene");
        const std::vector<Lesson> one{sampleLesson(u"Anna"_s, at("11:00:00"), minutes(50))};
        const QString longName = u"Maximiliane Konstantina Theodora "_s.repeated(7).left(200);
        const std::vector<Lesson> longNames{
            sampleLesson(longName, at("09:00:00"), minutes(50), TeachingPlatform::microsoftTeams),
            sampleLesson(longName, at("10:00:00"), minutes(50), TeachingPlatform::microsoftTeams),
            sampleLesson(longName, at("11:00:00"), minutes(50), TeachingPlatform::microsoftTeams)};
        const std::vector<Lesson> foreign{
            sampleLesson(u"王小明"_s, at("09:00:00"), minutes(50), TeachingPlatform::lingoAce),
            sampleLesson(u"محمد الأمين (B2)"_s, at("10:00:00"), minutes(50), TeachingPlatform::googleMeet),
            sampleLesson(u"李雷 (二班) – Grammar"_s, at("11:00:00"), minutes(50))};
        const std::vector<Lesson> hostile{sampleLesson(
            u"<b>Eve</b> &amp; \n\r\u2028\t\u0007\u202EevE\u0301\u0301"_s, at("11:00:00"), minutes(50))};

        QTest::newRow("no-lessons") << Scene{};
        QTest::newRow("one") << Scene{.lessons = one};
        QTest::newRow("teaching") << Scene{.lessons = fullDay()};
        QTest::newRow("between") << Scene{.time = "10:55:00", .lessons = fullDay()};
        QTest::newRow("all-today") << Scene{.lessons = fullDay(), .isAllToday = true};
        QTest::newRow("error") << Scene{.lessons = fullDay(), .hasFailed = true};
        QTest::newRow("long-names") << Scene{.lessons = longNames};
        QTest::newRow("chinese-and-arabic") << Scene{.lessons = foreign};
        QTest::newRow("hostile") << Scene{.lessons = hostile};
        QTest::newRow("twelve-hours")
            << Scene{.time = "12:10:00", .lessons = fullDay(), .locale = u"en_US"_s};
        QTest::newRow("right-to-left")
            << Scene{.lessons = foreign, .locale = u"ar_EG"_s, .direction = Qt::RightToLeft};
        QTest::newRow("large-text") << Scene{.lessons = fullDay(), .hasFailed = true, .fontScale = 2};
        QTest::newRow("dark-no-lessons") << Scene{.theme = Theme::dark};
        QTest::newRow("dark-teaching") << Scene{.lessons = fullDay(), .theme = Theme::dark};
        QTest::newRow("dark-between")
            << Scene{.time = "10:55:00", .lessons = fullDay(), .hasFailed = true, .theme = Theme::dark};
        QTest::newRow("dark-all-today")
            << Scene{.lessons = fullDay(), .isAllToday = true, .theme = Theme::dark};
    }

    void itLooksAsItShould()
    {
        QFETCH(Scene, scene);
        pictures::prepareApplication(scene.theme, scene.fontScale);
        QLocale::setDefault(QLocale(scene.locale));
        Fixture f(scene.time);
        f.start(scene.lessons);
        if (scene.hasFailed) {
            f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        }
        const auto view = f.pictured();
        view->setLayoutDirection(scene.direction);
        if (scene.isAllToday) {
            showAllToday(*view);
        }
        const QImage picture = pictureOf(*view);
        QCOMPARE(picture.width(), 320 * m_scaleFactor);
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(
            picture, u"menu-bar-panel-%1%2"_s.arg(QLatin1StringView(QTest::currentDataTag()), suffix));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void itHasAMenusMeasures()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.view();
        (void)view->grab(); // forces the layout
        QCOMPARE(view->width(), 320);
        const auto *schedule = view->findChild<ScheduleStatusView *>();
        QCOMPARE(schedule->geometry().topLeft(), QPoint(12, 6));
        QCOMPARE(schedule->width(), 320 - 2 * 12);
        QCOMPARE(view->findChild<look::SegmentedControl *>()->width(), 150);
        QCOMPARE(view->findChild<look::ScrollView *>()->height(), 174);
        showAllToday(*view);
        QCOMPARE(view->findChild<look::ScrollView *>()->height(), 300);
    }

    void noTextIsCutAtTwiceTheFontSize()
    {
        pictures::prepareApplication(Theme::light, 2);
        Fixture f;
        f.start(fullDay());
        const auto view = f.view();
        showAllToday(*view);
        view->resize(view->sizeHint());
        (void)view->grab();
        QCOMPARE(view->width(), 320);
        const auto *picker = view->findChild<look::SegmentedControl *>();
        QVERIFY(picker->width() > 150);
        for (const auto *segment : picker->findChildren<QAbstractButton *>()) {
            QVERIFY(segment->width() >= segment->sizeHint().width());
        }
        for (const auto *command : view->findChildren<QPushButton *>()) {
            QVERIFY(command->height() >= command->heightForWidth(command->width()));
            // "Show Debug Window" is too long for one line.
            QCOMPARE(command->height() > command->sizeHint().height(),
                     command->sizeHint().width() > command->width());
        }
        for (const LessonScheduleRow *row : listOf(*view).rows()) {
            QVERIFY(row->height() > 54);
            QCOMPARE(row->height(), row->sizeHint().height());
            QVERIFY(row->toolTip().isEmpty()); // a tool tip would mean that a name is cut
        }
    }

    void anOpenPanelGrowsWithTheFont()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.pictured();
        pictures::prepareApplication(Theme::light, 2);
        QCoreApplication::processEvents();
        const auto another = f.pictured();
        QVERIFY(pictureOf(*view) == pictureOf(*another));
    }

    void anOpenPanelFollowsTheTheme()
    {
        Fixture f;
        f.start(fullDay());
        f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        const auto view = f.pictured();
        const QImage light = pictureOf(*view);
        pictures::prepareApplication(Theme::dark);
        QCoreApplication::processEvents();
        const auto another = f.pictured();
        const QImage dark = pictureOf(*view);
        QVERIFY(dark == pictureOf(*another));
        QVERIFY(dark != light);
    }

    void theFocusedControlIsMarked()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        view->resize(view->sizeHint());
        QTRY_VERIFY(view->isActiveWindow());
        for (int press = 0; press < 8; ++press) {
            QTest::keyClick(view.get(), Qt::Key_Tab);
            QWidget *focused = QApplication::focusWidget();
            const QImage with = view->grab().toImage();
            focused->clearFocus();
            const QImage without = view->grab().toImage();
            focused->setFocus(Qt::TabFocusReason);
            int changed = 0;
            for (int y = 0; y < with.height(); ++y) {
                for (int x = 0; x < with.width(); ++x) {
                    changed += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
                }
            }
            QVERIFY2(changed > 100 * m_scaleFactor, qPrintable(accessible(focused).text(QAccessible::Name)));
        }
    }
};

QUILLET_TEST(MenuBarLookTest, runViewTest<MenuBarLookTest>);

#include "MenuBarLookTest.moc"
