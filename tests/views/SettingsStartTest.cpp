// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DateText.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SettingsFixture.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTableView>
#include <QTest>
#include <QTimeZone>

#include <ctime>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The field for a manual lesson's start.
class SettingsStartTest final : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void aStartCanBeTyped()
    {
        const SettingsRoom room;
        room.show();
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClicks(room.start(), u"1745"_s); // the cursor moves to the minute by itself
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 11, 21), QTime(17, 45), QTimeZone::utc()));
    }

    void aClickIntoTheStartSelectsTheUnitToType()
    {
        const SettingsRoom room;
        room.show();
        auto *field = room.start()->findChild<QLineEdit *>();
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:00"_s);
        const auto clickBefore = [&](int position) {
            // Clicks where the cursor is drawn for that position.
            field->setCursorPosition(position);
            QTest::mouseClick(field, Qt::LeftButton, {},
                              field->inputMethodQuery(Qt::ImCursorRectangle).toRectF().center().toPoint());
        };
        clickBefore(13); // between the digits of the hour
        QTRY_COMPARE(field->selectedText(), u"11"_s);
        QTest::keyClicks(room.start(), u"1745"_s);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 17:45"_s);
        clickBefore(1);
        QTRY_COMPARE(field->selectedText(), u"21"_s);
        QTest::keyClicks(room.start(), u"24"_s);
        QCOMPARE(room.start()->text(), u"24 Nov 2026 17:45"_s);
        // A selection made by dragging stays.
        field->setSelection(0, 6);
        QTest::mouseRelease(field, Qt::LeftButton, {}, QPoint(1, 1));
        QCoreApplication::processEvents();
        QCOMPARE(field->selectedText(), u"24 Nov"_s);
    }

    void aStartCanBeTypedInAnyLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        for (const auto *name : {u"en_US", u"en_GB", u"de_DE", u"zh_CN", u"zh_TW", u"fr_CA", u"ja_JP",
                                 u"ar_EG", u"fa_IR", u"he_IL", u"hi_IN"}) {
            const QString text = QString::fromUtf16(name);
            QTest::newRow(qPrintable(text)) << QLocale(text);
        }
    }

    void aStartCanBeTypedInAnyLocale()
    {
        QFETCH(QLocale, locale);
        const QLocale before;
        QLocale::setDefault(locale);
        const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
        const SettingsRoom room;
        room.show();
        auto *start = room.start();
        QVERIFY(start->displayedSections() & QDateTimeEdit::YearSection);
        start->setDateTime(QDateTime(QDate(2026, 12, 24), QTime(9, 15)));
        start->setFocus(Qt::TabFocusReason);
        start->setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClick(start, Qt::Key_Down);
        start->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClicks(start, u"40"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 12, 23), QTime(9, 40), QTimeZone::utc()));
    }

    void aStartSkippedByDaylightSavingBecomesAValidOne()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", "Europe/Berlin");
        tzset();
        const auto restore = qScopeGuard([before] {
            qputenv("TZ", before);
            tzset();
        });
        const SettingsRoom room;
        room.show();
        room.start()->setDateTime(QDateTime(QDate(2027, 3, 28), QTime(1, 30)));
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->dateTime().time(), QTime(3, 30));
        QTest::keyClicks(room.start(), u"02"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        const QDateTime start = toDateTime(room.lastLesson().startTime);
        QVERIFY(start == QDateTime(QDate(2027, 3, 28), QTime(1, 30), QTimeZone::utc()) ||
                start == QDateTime(QDate(2027, 3, 28), QTime(0, 30), QTimeZone::utc()));
    }

    void arrowKeysStepTheStartAndCarryIntoTheNextUnit()
    {
        const SettingsRoom room;
        room.show();
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(room.start(), Qt::Key_Down);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 10:59"_s);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:01"_s);
        room.start()->setSelectedSection(QDateTimeEdit::DaySection);
        for (int day = 0; day < 10; ++day) {
            QTest::keyClick(room.start(), Qt::Key_Up);
        }
        QCOMPARE(room.start()->text(), u"1 Dec 2026 11:01"_s);
        room.start()->setSelectedSection(QDateTimeEdit::MonthSection);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->text(), u"1 Jan 2027 11:01"_s);
    }

    void aStartCanBeSteppedWithTheMouse()
    {
        const SettingsRoom room;
        room.show();
        room.step(QStyle::SC_SpinBoxUp);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 12:00"_s);
        QVERIFY(room.start()->hasFocus());
        room.step(QStyle::SC_SpinBoxDown);
        room.step(QStyle::SC_SpinBoxDown);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 10:00"_s);
        room.start()->setSelectedSection(QDateTimeEdit::YearSection);
        room.step(QStyle::SC_SpinBoxUp);
        QCOMPARE(room.start()->text(), u"21 Nov 2027 10:00"_s);
    }

    void aChosenStartIsAWholeMinute()
    {
        const SettingsRoom room;
        room.show();
        room.step(QStyle::SC_SpinBoxUp);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 11, 21), QTime(12, 0), QTimeZone::utc()));
    }

    void aDayCanBeClickedInTheCalendar()
    {
        const SettingsRoom room;
        room.show();
        auto *open = room.button(u"Choose a day for Start"_s);
        QVERIFY(open != nullptr);
        QTest::mouseClick(open, Qt::LeftButton);
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        QCOMPARE(viewWalk::unnamedControls(popup).join(u'\n'), QString());
        auto *calendar = popup->findChild<QCalendarWidget *>();
        QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 21));
        auto *days = calendar->findChild<QTableView *>();
        const auto day = [&]() -> QModelIndex {
            for (int week = 1; week < days->model()->rowCount(); ++week) {
                for (int weekday = 0; weekday < days->model()->columnCount(); ++weekday) {
                    const QModelIndex index = days->model()->index(week, weekday);
                    if (index.data().toInt() == 25 && week > 2) { // not the 25th of October
                        return index;
                    }
                }
            }
            return {};
        }();
        QVERIFY(day.isValid());
        QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(day).center());
        QCOMPARE(room.start()->text(), u"25 Nov 2026 11:00"_s);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
    }

    void keysChooseADayInTheCalendarAndEscapeCancels()
    {
        const SettingsRoom room;
        room.show();
        auto *open = room.button(u"Choose a day for Start"_s);
        open->setFocus();
        QTest::keyClick(open, Qt::Key_Space);
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        QWidget *days = popup->findChild<QTableView *>();
        QTest::keyClick(days, Qt::Key_Down);
        QTest::keyClick(days, Qt::Key_Return);
        QCOMPARE(room.start()->text(), u"28 Nov 2026 11:00"_s);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);

        QTest::keyClick(open, Qt::Key_Space);
        popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        days = popup->findChild<QTableView *>();
        QTest::keyClick(days, Qt::Key_Up);
        QTest::keyClick(days, Qt::Key_Escape);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(room.start()->text(), u"28 Nov 2026 11:00"_s);
        room.view->close();
    }
};

QUILLET_TEST(SettingsStartTest, runViewTest<SettingsStartTest>);

#include "SettingsStartTest.moc"
