// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Views/LessonScheduleRow.h"
#include "tests/support/Pictures.h"
#include "tests/views/MenuBarFixture.h"

#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

/// What the panel shows of today's lessons.
class MenuBarScheduleTest final : public MenuBarFixture {
    Q_OBJECT

private Q_SLOTS:
    void withoutLessonsItSaysSo()
    {
        Fixture f;
        f.start({});
        const auto view = f.shown();
        QStringList texts;
        for (const auto *text : view->findChildren<look::Text *>()) {
            if (text->isVisible()) {
                texts << text->text();
            }
        }
        QCOMPARE(texts, (QStringList{u"Today\u2019s schedule"_s, u"No lessons in Apple Calendar today"_s}));
        QVERIFY(!view->findChild<look::ScrollView *>()->isVisible());
    }

    void duringALessonItsNeighboursAreShown()
    {
        Fixture f("10:20:00");
        f.start({sampleLesson(u"A"_s, at("09:00:00"), minutes(50)),
                 sampleLesson(u"B"_s, at("10:00:00"), minutes(50)),
                 sampleLesson(u"C"_s, at("11:00:00"), minutes(50)),
                 sampleLesson(u"D"_s, at("12:00:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view),
                 (QStringList{u"09:00, A, Zoom, Completed"_s, u"10:00, B, Zoom, In progress"_s,
                              u"11:00, C, Zoom, NEXT, in 40m"_s}));
        showAllToday(*view);
        QCOMPARE(rowTexts(*view).size(), 4);
        QCOMPARE(rowTexts(*view).last(), u"12:00, D, Zoom, in 1h 40m"_s);
    }

    void aCountdownGoesDownOnceASecond()
    {
        Fixture f("10:59:15");
        f.start({sampleLesson(u"A"_s, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in 45s"_s});
        for (int second = 44; second > 0; --second) {
            f.clock.advance(Seconds{1});
            QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in %1s"_s.arg(second)});
        }
        f.clock.advance(Seconds{1});
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, In progress"_s});
    }

    void theDaySwitchStartsOnTheCompactList()
    {
        Fixture f;
        f.start(fullDay());
        auto view = f.shown();
        showAllToday(*view);
        QCOMPARE(rowTexts(*view).size(), 40);
        view = f.shown();
        QCOMPARE(view->findChild<look::SegmentedControl *>()->selection(), 0);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void allTodayScrollsToTheLessonsShownBefore()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        const QString first = rowTexts(*view).front();
        showAllToday(*view);
        const auto rows = listOf(*view).rows();
        const auto row = std::ranges::find(rows, first, &LessonScheduleRow::accessibleName);
        QCOMPARE((*row)->mapTo(view->findChild<look::ScrollView *>()->viewport(), QPoint()).y(), 0);
    }

    void aTruncatedNameCanBeReadInFull()
    {
        Fixture f;
        const QString name = u"Maximiliane <i>Konstantina</i> "_s.repeated(6).trimmed();
        f.start({sampleLesson(name, at("11:00:00"), minutes(25)),
                 sampleLesson(u"<b>Eve</b>"_s, at("12:00:00"), minutes(25))});
        const auto view = f.shown();
        const auto rows = listOf(*view).rows();
        QCOMPARE(rows.front()->toolTip(), u"<p>"_s + name.toHtmlEscaped() + u"</p>"_s);
        QCOMPARE(rows.front()->accessibleName(), u"11:00, "_s + name + u", Zoom, NEXT, in 40m"_s);
        QVERIFY(rows.back()->toolTip().isEmpty());
    }

    void aNameOfAMillionCharactersIsTruncated()
    {
        Fixture f;
        const QString name = u"王<b>\n\u202E "_s.repeated(200'000);
        f.start({sampleLesson(name, at("10:00:00"), minutes(50)),
                 sampleLesson(name, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        (void)view->grab();
        f.clock.advance(Seconds{5});
        for (const QString &text : rowTexts(*view)) {
            QVERIFY(text.size() < 1100);
            QVERIFY(!text.contains(u'\n') && !text.contains(u'\u202E'));
        }
    }

    void theStartTimeFollowsTheUsersLocale()
    {
        QLocale::setDefault(QLocale(u"en_US"_s));
        Fixture f("12:10:00");
        f.start({sampleLesson(u"A"_s, at("13:05:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view), QStringList{u"1:05 PM, A, Zoom, NEXT, in 55m"_s});
    }
};

QUILLET_TEST(MenuBarScheduleTest, runViewTest<MenuBarScheduleTest>);

#include "MenuBarScheduleTest.moc"
