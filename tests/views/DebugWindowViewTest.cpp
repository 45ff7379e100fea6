// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/DebugWindowView.h"
#include "Corvane/Look/Text.h"
#include "tests/support/DebugRoom.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;
using Condition = CalendarStatus::Condition;
using Room = DebugRoom;

class DebugWindowViewTest final : public QObject {
    Q_OBJECT

private:
    /// The whole column at `width`, without scrolling. The log file's path, which differs from run to run, is
    /// replaced by a fixed one.
    static QImage column(const Room &room, int width)
    {
        room.view->resize(width, 10'000);
        room.view->show();
        (void)room.view->grab();
        auto place = room.list(u"Now"_s)->rows().back()->row();
        place.title = u"/home/anna/.local/state/Logs/Quillet/quillet-debug.log"_s;
        room.list(u"Now"_s)->rows().back()->setRow(place);
        room.list(u"Now"_s)->updateGeometry(); // its height may change
        QCoreApplication::sendPostedEvents();
        room.view->resize(width, room.page()->widget()->heightForWidth(width));
        return room.view->grab().toImage();
    }

    static void comparePicture(const QImage &picture, const QString &name)
    {
        const QString difference = pictures::difference(picture, u"debug-"_s + name);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void itShowsExactlyTheseTexts()
    {
        const Room room;
        room.show();
        QCOMPARE(viewWalk::texts(*room.view).join(u'|'),
                 u"Debug Window|What Quillet sees at this moment.|Copy Report|Open Log|"
                 "A copied report shows only the initials of students.|Now|Calendars|"
                 "No calendars were found.|Not lessons today|No event of today was left out.|Log|"
                 "Nothing has been logged yet."_s);
        QCOMPARE(room.rows(u"Now"_s).mid(1, 3),
                 (QStringList{u"State, prepare"_s, u"Current lesson, Anna (Zoom)"_s,
                              u"Next lesson, Anna (Zoom)"_s}));
        QCOMPARE(room.rows(u"Calendars"_s).size(), 6);
        QCOMPARE(room.rows(u"Calendars"_s).at(4), u"Shared, no events today · last read 09:10 · dav.example, "
                                                  "No answer since 09:14, shows its last answer"_s);
        QCOMPARE(
            room.rows(u"Not lessons today"_s),
            (QStringList{
                u"All day, School holiday, An all-day event"_s,
                u"08:00 – 09:00, Dentist, A personal word in the title: dentist"_s,
                u"12:00 – 13:00, Team meeting, No platform named, and the title speaks of a meeting"_s}));
        QCOMPARE(room.rows(u"Log"_s).at(0), u"09:56:00, app started"_s);
    }

    void aPartWithoutRowsSaysSo()
    {
        Room room;
        room.monitor.setCalendars({});
        room.monitor.setEvents({});
        room.show();
        QVERIFY(room.list(u"Calendars"_s)->isHidden() && room.list(u"Not lessons today"_s)->isHidden());
        const auto isSaid = [&](const QString &text) {
            for (const auto *label : room.view->findChildren<look::Text *>()) {
                if (label->text() == text) {
                    return label->isVisible();
                }
            }
            return false;
        };
        QVERIFY(isSaid(u"No calendars were found."_s) && isSaid(u"No event of today was left out."_s));
        QVERIFY(!isSaid(u"Nothing has been logged yet."_s));
    }

    void whileHiddenItDoesNotUpdate()
    {
        Room room;
        room.log.log(u"one"_s, at("09:58:00"));
        room.monitor.setEvents({});
        room.clock.advance(Seconds{1});
        QCoreApplication::processEvents();
        QVERIFY(room.rows(u"Log"_s).empty() && room.rows(u"Now"_s).empty());
        room.show();
        QCOMPARE(room.rows(u"Log"_s).size(), 3);
    }

    void whileItExistsTheCalendarsAreAskedAtEveryLoad()
    {
        Room room;
        QVERIFY(room.monitor.isViewed());
        room.view.reset();
        QVERIFY(!room.monitor.isViewed());
    }

    void itUpdatesAtMostOnceASecond()
    {
        Room room;
        QElapsedTimer sinceShown;
        room.view->show();
        sinceShown.start();
        QCOMPARE(room.rows(u"Log"_s).size(), 2);
        room.log.log(u"one"_s, at("09:58:00"));
        room.monitor.setEvents({});
        room.monitor.setCalendars({});
        room.clock.advance(Seconds{180});
        QCoreApplication::processEvents();
        if (sinceShown.elapsed() < 900) { // proves nothing if the machine stalled for longer
            QCOMPARE(room.rows(u"Log"_s).size(), 2);
        }
        QTRY_COMPARE(room.rows(u"Log"_s).size(), 3);
        QVERIFY(sinceShown.elapsed() >= 900);
        QVERIFY(room.rows(u"Calendars"_s).empty() && room.rows(u"Not lessons today"_s).empty());
        QCOMPARE(room.rows(u"Now"_s).at(1), u"State, startNow"_s);
    }

    void aFullLogScrollsOnAndReusesItsRows()
    {
        Room room;
        for (int line = 0; line < 100; ++line) {
            room.log.log(u"line %1"_s.arg(line), at("09:58:00"));
        }
        room.show();
        QCOMPARE(room.rows(u"Log"_s).front(), u"09:58:00, line 20"_s);
        const DebugRow *kept = room.list(u"Log"_s)->rows().at(3);
        room.log.log(u"the last"_s, at("09:59:00"));
        QTRY_COMPARE(room.rows(u"Log"_s).back(), u"09:59:00, the last"_s);
        QCOMPARE(room.rows(u"Log"_s).size(), 80);
        QCOMPARE(room.list(u"Log"_s)->rows().at(2), kept);
        QCOMPARE(kept->accessibleName(), u"09:58:00, line 23"_s);
    }

    void copyReportPutsItOnTheClipboardWithoutNames()
    {
        const Room room;
        room.show();
        viewWalk::button(*room.view, u"Copy Report"_s)->click();
        const QString copied = QGuiApplication::clipboard()->text();
        QVERIFY(copied.contains(u"Next lesson, A. (Zoom)"_s) && copied.contains(u"student=\"A.\""_s));
        QVERIFY(copied.contains(u"D., A personal word in the title: dentist"_s));
        QVERIFY(!copied.contains(u"Anna"_s));
        QVERIFY(viewWalk::texts(*room.view)
                    .contains(u"The report is on the clipboard. It shows only the initials of students."_s));
    }

    void openLogOpensTheFileOrSaysThatItCannot()
    {
        Room room;
        room.show();
        auto *open = viewWalk::button(*room.view, u"Open Log"_s);
        open->click();
        QCOMPARE(room.opened, QList<QUrl>{room.log.logURL()});
        QVERIFY(!viewWalk::texts(*room.view).contains(u"The log could not be opened."_s));
        room.opens = false;
        open->click();
        QVERIFY(viewWalk::texts(*room.view).contains(u"The log could not be opened."_s));
    }

    void theKeyboardReachesEachRowAndScrollsItIntoView()
    {
        const Room room;
        room.view->resize(620, 300);
        room.show();
        QCOMPARE(viewWalk::tabOrder(*room.view).size(), 6); // two buttons, four lists
        const DebugRowList *log = room.list(u"Log"_s);
        log->rows().front()->setFocus(Qt::TabFocusReason);
        const auto isSeen = [&](const QWidget *row) {
            return room.view->rect().contains(QRect(row->mapTo(room.view.get(), QPoint()), row->size()));
        };
        QVERIFY(isSeen(log->rows().front()));
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Down);
        QCOMPARE(room.view->focusWidget(), log->rows().at(1));
        QVERIFY(isSeen(log->rows().at(1)));
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Home);
        QCOMPARE(room.view->focusWidget(), log->rows().at(0));
        QTest::keyClick(room.view->focusWidget(), Qt::Key_End);
        QCOMPARE(room.view->focusWidget(), log->rows().back());
        // Tab returns to the row that had the focus.
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Backtab);
        QVERIFY(!log->isAncestorOf(room.view->focusWidget()));
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Tab);
        QCOMPARE(room.view->focusWidget(), log->rows().back());
    }

    void aRemovedRowPassesTheFocusToAnother()
    {
        Room room;
        room.show();
        room.list(u"Calendars"_s)->rows().back()->setFocus();
        room.monitor.setCalendars({calendars().front()});
        QTRY_COMPARE(room.rows(u"Calendars"_s).size(), 1);
        QCOMPARE(room.view->focusWidget(), room.list(u"Calendars"_s)->rows().front());
    }

    void aScreenReaderReadsListsAndRows()
    {
        const Room room;
        room.show();
        QCOMPARE(viewWalk::unnamedControls(room.view.get()), QStringList());
        QAccessibleInterface *list = QAccessible::queryAccessibleInterface(room.list(u"Calendars"_s));
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->childCount(), 6);
        QCOMPARE(list->child(0)->role(), QAccessible::ListItem);
        QCOMPARE(list->child(3)->text(QAccessible::Name),
                 u"Bookings, no events today · last read 09:10 · dav.example, "
                 "Waiting for its password since 09:14. Its lessons are missing."_s);
        QVERIFY(list->child(0)->state().focusable);
    }

    void hundredsOfRowsAreCheap()
    {
        Room room;
        std::vector<CalendarEvent> many(500, booked(longName + u'!', "08:00:00", "09:00:00"));
        room.monitor.setEvents(many);
        room.show();
        QElapsedTimer timer;
        timer.start();
        many.front().title = u"Another!"_s;
        room.monitor.setEvents(many);
        QTRY_COMPARE(room.rows(u"Not lessons today"_s).front().section(u", "_s, 1, 1), u"Another!"_s);
        QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
    }

    void rowsGrowWithTheFontWhileTheWindowIsOpen()
    {
        const Room room;
        room.show();
        const int before = room.list(u"Calendars"_s)->height();
        pictures::prepareApplication(Theme::light, 2);
        QTRY_VERIFY(room.list(u"Calendars"_s)->height() > before * 3 / 2);
        QTRY_COMPARE(viewWalk::cutWidgets(*room.view), QStringList());
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<double>("fontScale");
        QTest::addColumn<int>("width");
        QTest::newRow("light") << Theme::light << 1.0 << 620;
        QTest::newRow("dark") << Theme::dark << 1.0 << 620;
        QTest::newRow("large") << Theme::light << 1.8 << 620;
        QTest::newRow("narrow") << Theme::light << 1.0 << 300;
        QTest::newRow("wide") << Theme::light << 1.0 << 1000;
    }

    void itLooksAsItShould()
    {
        QFETCH(Theme, theme);
        QFETCH(double, fontScale);
        QFETCH(int, width);
        pictures::prepareApplication(theme, fontScale);
        const Room room;
        const QImage picture = column(room, width);
        QCOMPARE(viewWalk::cutWidgets(*room.view), QStringList());
        comparePicture(picture, QLatin1StringView(QTest::currentDataTag()));
    }

    void aSmallWindowScrolls()
    {
        const Room room;
        (void)column(room, 620);
        room.view->resize(420, 320);
        comparePicture(room.view->grab().toImage(), u"small"_s);
    }

    void anyNameLooksAsItShould_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("names") << Qt::LeftToRight;
        QTest::newRow("right-to-left") << Qt::RightToLeft;
    }

    void anyNameLooksAsItShould()
    {
        QFETCH(Qt::LayoutDirection, direction);
        const auto back = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
        QGuiApplication::setLayoutDirection(direction);
        Room room;
        const QString hostile = u"<b>Eve</b> &amp;\n\t\u0007\u202EevE"_s;
        room.monitor.setCalendars({calendar(longName, longName, Condition::unopened, longName),
                                   calendar(u"王小明 (二班)"_s, u"学校"_s, Condition::silent, {}, true),
                                   calendar(u"محمد الأمين (B2)"_s, u"المدرسة"_s, Condition::answers),
                                   calendar(hostile, hostile, Condition::leftOut, hostile),
                                   calendar(QString(150, u'W'), {}, Condition::answers)});
        room.monitor.setEvents({booked(longName + u'!', "08:00:00", "09:00:00"),
                                booked(u"与王小明吃午饭!"_s, "09:00:00", "10:00:00"),
                                booked(u"موعد: محمد!"_s, "10:00:00", "11:00:00"),
                                booked(hostile, "11:00:00", "12:00:00"), booked({}, "12:00:00", "13:00:00")});
        room.log.log(u"calendar lesson student=\"محمد الأمين\" platform=\"Zoom\""_s, at("09:58:00"));
        const QImage picture = column(room, 620);
        QCOMPARE(viewWalk::cutWidgets(*room.view), QStringList());
        comparePicture(picture, QLatin1StringView(QTest::currentDataTag()));
    }
};

QUILLET_TEST(DebugWindowViewTest, runViewTest<DebugWindowViewTest>);

#include "DebugWindowViewTest.moc"
