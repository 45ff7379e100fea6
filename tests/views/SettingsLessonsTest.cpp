// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ElidedText.h"
#include "Corvane/Look/Glow.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Settings/ManualLessonList.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SettingsFixture.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimeZone>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The manual lessons in the settings window: the form and the list.
class SettingsLessonsTest final : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void aBlankNameAddsNothingAndKeepsTheField()
    {
        const SettingsRoom room;
        room.studentName()->setText(u"   "_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        QVERIFY(room.settings.manualLessons().empty());
        QVERIFY(!room.stored(u"manualLessons"_s).isValid());
        QCOMPARE(room.studentName()->text(), u"   "_s);
        QCOMPARE(room.reloads, 0);
    }

    void anAddedLessonGlowsForAMoment()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.show();
        QVERIFY(room.view->findChild<look::Glow *>() == nullptr);
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTRY_VERIFY(room.view->findChild<look::Glow *>() != nullptr);
        const QPointer<look::Glow> glow = room.view->findChild<look::Glow *>();
        QWidget *row = room.list()->rowOf(1);
        const auto area = [&](const QWidget *widget) {
            return QRect(widget->mapTo(room.view.get(), QPoint()), widget->size());
        };
        QVERIFY(area(glow).contains(area(row)));
        QVERIFY(!area(glow).intersects(area(room.list()->rowOf(0))));
        room.button(u"Remove"_s)->click(); // removes Anna, so Ben's row moves up
        QCOMPARE(room.list()->rowOf(0), row);
        QTRY_COMPARE(row->y(), 0); // it has moved up
        QTRY_VERIFY(area(glow).contains(area(row)) && area(glow).height() < 2 * row->height());
        QTRY_VERIFY(glow.isNull());
    }

    void aRemovedLessonsGlowEnds()
    {
        const SettingsRoom room;
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTRY_VERIFY(room.view->findChild<look::Glow *>() != nullptr);
        const QPointer<look::Glow> glow = room.view->findChild<look::Glow *>();
        room.button(u"Remove"_s)->click();
        QVERIFY(glow->isHidden());
        QTRY_VERIFY_WITH_TIMEOUT(glow.isNull(), 500);
    }

    void withoutMotionNothingGlows()
    {
        qobject_cast<look::Style *>(QApplication::style())->follow({.reducesMotion = true});
        const SettingsRoom room;
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTest::qWait(50);
        QVERIFY(room.view->findChild<look::Glow *>() == nullptr);
    }

    void removingTheLastLessonSavesAnEmptyList()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.button(u"Remove"_s)->click();
        QVERIFY(room.settings.manualLessons().empty());
        QCOMPARE(room.stored(u"manualLessons"_s).toByteArray(), QByteArray("[]"));
        QCOMPARE(room.reloads, 1);
        QVERIFY(room.list()->isHidden());
    }

    void eachRemoveButtonRemovesItsOwnLesson()
    {
        const std::vector<ManualLessonEntry> lessons = sampleLessons();
        const SettingsRoom room(lessons);
        const auto removed = [&](std::size_t index) {
            viewWalk::button(*room.list()->rowOf(index), u"Remove"_s)->click();
        };
        removed(2);
        QCOMPARE(room.settings.manualLessons(),
                 (std::vector{lessons[0], lessons[1], lessons[3], lessons[4]}));
        removed(3);
        removed(0);
        QCOMPARE(room.settings.manualLessons(), (std::vector{lessons[1], lessons[3]}));
        QCOMPARE(room.reloads, 3);
    }

    void aDoublePressOnRemoveRemovesOneLesson()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"Ben"_s)});
        auto *remove = room.button(u"Remove"_s);
        remove->click();
        remove->click();
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{1});
    }

    void ofTwoIdenticalEntriesOneIsRemoved()
    {
        const ManualLessonEntry twin = entry(u"Anna"_s);
        const SettingsRoom room({twin, twin});
        viewWalk::button(*room.list()->rowOf(1), u"Remove"_s)->click();
        QCOMPARE(room.settings.manualLessons(), std::vector{twin});
    }

    void theFormBeginsWithAnOnlineLessonOfThirtyMinutesInHalfAnHour()
    {
        const SettingsRoom room;
        QCOMPARE(room.studentName()->text(), QString());
        QCOMPARE(room.picker(u"Platform"_s)->currentText(), u"Online Lesson"_s);
        QCOMPARE(room.picker(u"Length"_s)->currentText(), u"30 min"_s);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:00"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE((room.lastLesson().startTime - wholeMinute).count(), 1800.0);
        QCOMPARE(room.lastLesson().durationMinutes, 30);
        QCOMPARE(room.lastLesson().platform, TeachingPlatform::onlineLesson);
    }

    void addingALessonSavesItAtOnceAndReloadsTheLessons()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.studentName()->setText(u" \tBen \u2028"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{2});
        QCOMPARE(room.lastLesson().studentName, u"Ben"_s);
        QVERIFY(!room.lastLesson().id.isNull());
        const auto stored = decodeManualLessons(room.stored(u"manualLessons"_s).toByteArray());
        QVERIFY(stored.has_value());
        QCOMPARE(*stored, room.settings.manualLessons());
        QCOMPARE(room.reloads, 1);
        QCOMPARE(room.studentName()->text(), QString());
    }

    void platformStartAndLengthStayForTheNextLesson()
    {
        SettingsRoom room;
        room.show();
        SettingsRoom::choose(room.picker(u"Platform"_s), u"Google Meet"_s);
        SettingsRoom::choose(room.picker(u"Length"_s), u"45 min"_s);
        room.start()->setDateTime(QDateTime(QDate(2026, 12, 1), QTime(9, 15)));
        for (const QString &name : {u"Anna"_s, u"Ben"_s}) {
            room.studentName()->setText(name);
            room.button(u"Add Manual Lesson"_s)->click();
            QCOMPARE(room.lastLesson().studentName, name);
            QCOMPARE(room.lastLesson().platform, TeachingPlatform::googleMeet);
            QCOMPARE(room.lastLesson().durationMinutes, 45);
            QCOMPARE(toDateTime(room.lastLesson().startTime),
                     QDateTime(QDate(2026, 12, 1), QTime(9, 15), QTimeZone::utc()));
        }
        QVERIFY(room.settings.manualLessons()[0].id != room.settings.manualLessons()[1].id);
    }

    void enterInTheNameAddsTheLessonAndTheNextNameCanBeTyped()
    {
        const SettingsRoom room;
        room.show();
        room.studentName()->setFocus();
        QTest::keyClicks(room.studentName(), u"Anna"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        QTest::keyClicks(room.studentName(), u"Ben"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Enter);
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{2});
        QCOMPARE(room.lastLesson().studentName, u"Ben"_s);
        QCOMPARE(room.view->focusWidget(), room.studentName());
    }

    void anyNameIsShownAsPlainTextOnOneLine()
    {
        const SettingsRoom room(sampleLessons());
        (void)room.view->grab();
        for (std::size_t index = 0; index < sampleLessons().size(); ++index) {
            const auto *name = room.list()->rowOf(index)->findChild<look::ElidedText *>();
            QCOMPARE(name->textFormat(), Qt::PlainText);
            for (const QChar c : {u'\n', u'\t', u'\u0007', u'\u202E'}) {
                QVERIFY(!name->text().contains(c));
            }
        }
        QCOMPARE(room.list()->rowOf(4)->findChild<look::ElidedText *>()->text(), u"<b>Eve</b> &amp; evE"_s);
    }

    void aTruncatedNamesToolTipShowsItInFull()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"<i>"_s + longStudentName)});
        (void)room.view->grab();
        QCOMPARE(room.list()->rowOf(0)->findChild<look::ElidedText *>()->toolTip(), QString());
        const auto *cut = room.list()->rowOf(1)->findChild<look::ElidedText *>();
        QCOMPARE(QTextDocumentFragment::fromHtml(cut->toolTip()).toPlainText(),
                 (u"<i>"_s + longStudentName).trimmed());
        QCOMPARE(QAccessible::queryAccessibleInterface(const_cast<look::ElidedText *>(cut))
                     ->text(QAccessible::Name),
                 (u"<i>"_s + longStudentName).trimmed());
    }

    void eachRemoveButtonDescribesItsLesson()
    {
        const SettingsRoom room({entry(u"Anna"_s, TeachingPlatform::microsoftTeams)});
        auto *remove = room.button(u"Remove"_s);
        const auto *interface = QAccessible::queryAccessibleInterface(remove);
        QCOMPARE(interface->text(QAccessible::Name), u"Remove"_s);
        QCOMPARE(interface->text(QAccessible::Description),
                 u"Anna, Microsoft Teams, Sat 21 Nov 2026 11:30, 45 min"_s);
    }

    void addingOrRemovingALessonKeepsTheOtherRows()
    {
        std::vector<ManualLessonEntry> lessons = aHundredLessons();
        SettingsRoom room(lessons);
        std::vector<QWidget *> rows;
        rows.reserve(100);
        for (std::size_t index = 0; index < 100; ++index) {
            rows.push_back(room.list()->rowOf(index));
        }
        lessons.push_back(entry(u"New"_s));
        room.settings.setManualLessons(lessons);
        lessons.erase(lessons.begin() + 50);
        room.settings.setManualLessons(lessons);
        rows.erase(rows.begin() + 50);
        for (std::size_t index = 0; index < 99; ++index) {
            QCOMPARE(room.list()->rowOf(index), rows[index]);
        }
    }

    void anAddedRowIsScrolledIntoView()
    {
        const SettingsRoom room(aHundredLessons());
        room.show();
        QCOMPARE(room.page()->verticalScrollBar()->value(), 0);
        QTest::keyClicks(room.studentName(), u"New"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        const QWidget *added = room.list()->rowOf(100);
        const auto isSeen = [&](const QWidget *widget) {
            const QWidget *viewport = room.page()->viewport();
            return viewport->rect().contains(QRect(widget->mapTo(viewport, QPoint()), widget->size()));
        };
        QTRY_VERIFY(isSeen(added));
        QTest::keyClicks(room.studentName(), u"A"_s); // typing the next name scrolls the field back into view
        QVERIFY(isSeen(room.studentName()));
    }

    void theFocusMovesToTheNeighbourOfARemovedRow()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"Ben"_s), entry(u"Cleo"_s)});
        room.show();
        const auto remove = [&](std::size_t row) {
            return viewWalk::button(*room.list()->rowOf(row), u"Remove"_s);
        };
        remove(1)->setFocus();
        QTest::keyClick(remove(1), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), remove(1)); // Cleo's
        QTest::keyClick(remove(1), Qt::Key_Return);
        QCOMPARE(room.view->focusWidget(), remove(0));
        QTest::keyClick(remove(0), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), room.button(u"Add Manual Lesson"_s));
    }
};

QUILLET_TEST(SettingsLessonsTest, runViewTest<SettingsLessonsTest>);

#include "SettingsLessonsTest.moc"
