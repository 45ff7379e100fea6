// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SymbolTurn.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SettingsFixture.h"

#include <QComboBox>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

void roll(QWidget *widget)
{
    const QPointF middle = QRectF(widget->rect()).center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // only a spontaneous event propagates to the parent
    qApp->notify(widget, &event);
}

} // namespace

/// The settings window as a whole: its texts, its keyboard, its commands.
class SettingsViewTest final : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void itShowsExactlyTheseTexts()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        QCOMPARE(
            viewWalk::texts(*room.view),
            (QStringList{
                u"Settings"_s,
                u"Choose how Quillet follows your teaching day."_s,
                u"Calendar Connection"_s,
                u"Apple Calendar"_s,
                u"Quillet reads today's lessons from the calendars enabled on this Mac."_s,
                u"Google Calendar"_s,
                u"Add your Google account in macOS Calendar or Internet Accounts. Its lessons then appear here automatically."_s,
                u"Reload Today's Lessons"_s,
                u"Manual Lesson Entry"_s,
                u"Use this if a lesson is not in your calendar. Manual lessons use the same working Quillet reminders."_s,
                u"Student name"_s,
                u"Platform"_s,
                u"Online Lesson"_s,
                u"LingoAce"_s,
                u"Microsoft Teams"_s,
                u"Zoom"_s,
                u"Google Meet"_s,
                u"Start"_s,
                u"Length"_s,
                u"15 min"_s,
                u"20 min"_s,
                u"25 min"_s,
                u"30 min"_s,
                u"40 min"_s,
                u"45 min"_s,
                u"60 min"_s,
                u"Add Manual Lesson"_s,
                u"Anna"_s,
                u"Sat 21 Nov 2026 11:30"_s,
                u"45 min"_s,
                u"Remove"_s,
                u"Reminders & Display"_s,
                u"Play sound with reminders"_s,
                u"Start Quillet when I log in"_s,
                u"Popup Position"_s,
                u"Center"_s,
                u"Top"_s,
                u"Bottom"_s,
                u"Top Left"_s,
                u"Top Right"_s,
                u"Bottom Left"_s,
                u"Bottom Right"_s,
                u"Notification Duration"_s,
                u"5 seconds"_s,
                u"10 seconds"_s,
                u"Help"_s,
                u"Your pop-up timings are already set to guide you through each lesson changeover."_s,
                u"Open Quick Start"_s,
                u"Open User Manual"_s,
            }));
    }

    void theReloadArrowTurnsWhileLessonsAreLoaded()
    {
        SettingsRoom room;
        room.show();
        const auto *button = room.button(u"Reload Today's Lessons"_s);
        room.loadTakes = 50;
        room.button(u"Reload Today's Lessons"_s)->click();
        QTRY_VERIFY(look::SymbolTurn::degrees(button) > 90);
        QTRY_COMPARE(look::SymbolTurn::degrees(button), 0.0); // stops after a full turn
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click(); // this loads lessons, too
        QTRY_VERIFY(look::SymbolTurn::degrees(button) > 90);
        room.view.reset(); // while it turns
        QCOMPARE(room.reloads, 2);
        QTest::qWait(2 * room.loadTakes);
    }

    void reloadAsksForTodaysLessons()
    {
        const SettingsRoom room;
        room.button(u"Reload Today's Lessons"_s)->click();
        QCOMPARE(room.reloads, 1);
    }

    void quickStartRestartsTheSetup()
    {
        SettingsRoom room;
        room.settings.setHasCompletedWelcome(true);
        room.button(u"Open Quick Start"_s)->click();
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        QCOMPARE(room.stored(u"hasCompletedWelcome"_s).toBool(), false);
        QCOMPARE(room.opened, QStringList{u"setup|Welcome to Quillet"_s});
    }

    void theUserManualOpensTheHelp()
    {
        SettingsRoom room;
        room.settings.setHasCompletedWelcome(true);
        room.button(u"Open User Manual"_s)->click();
        QCOMPARE(room.opened, QStringList{u"help|Quillet Help"_s});
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
    }

    void theWheelScrollsThePageAndChangesNothing()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        QList<QWidget *> fields{room.start()};
        for (auto *picker : room.view->findChildren<QComboBox *>()) {
            fields << picker;
        }
        for (QWidget *field : fields) {
            field->setFocus();
            room.page()->verticalScrollBar()->setValue(0);
            const QString before =
                QAccessible::queryAccessibleInterface(field)->text(QAccessible::Value) + room.start()->text();
            roll(field);
            QCOMPARE(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Value) +
                         room.start()->text(),
                     before);
            QVERIFY2(room.page()->verticalScrollBar()->value() > 0, qPrintable(field->accessibleName()));
        }
    }

    void tabReachesEveryControlInReadingOrder()
    {
        SettingsRoom room({entry(u"Anna"_s)});
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QStringList order = viewWalk::tabOrder(*room.view);
        const auto first = order.indexOf(u"Reload Today's Lessons"_s);
        QVERIFY(first >= 0);
        order = order.mid(first) + order.first(first);
        const QStringList wanted{u"Reload Today's Lessons"_s,
                                 u"Student name"_s,
                                 u"Platform"_s,
                                 u"Start"_s,
                                 u"Choose a day for Start"_s,
                                 u"Length"_s,
                                 u"Add Manual Lesson"_s,
                                 u"Remove"_s,
                                 u"Remove"_s,
                                 u"Play sound with reminders"_s,
                                 u"Start Quillet when I log in"_s,
                                 u"Popup Position"_s,
                                 u"Notification Duration"_s,
                                 u"Open Quick Start"_s,
                                 u"Open User Manual"_s};
        QCOMPARE(order.join(u'|'), wanted.join(u'|'));
    }

    void tabMovesFromAddToTheFirstLessonsButton()
    {
        const SettingsRoom room; // without a lesson at first
        room.show();
        for (const QString &name : {u"Anna"_s, u"Ben"_s}) {
            room.studentName()->setText(name);
            room.button(u"Add Manual Lesson"_s)->click();
        }
        room.button(u"Add Manual Lesson"_s)->setFocus();
        for (const QString &name : {u"Remove"_s, u"Remove"_s, u"Play sound with reminders"_s}) {
            QTest::keyClick(room.view->focusWidget(), Qt::Key_Tab);
            QCOMPARE(qobject_cast<QAbstractButton *>(room.view->focusWidget())->text(), name);
        }
    }

    void everyControlHasAName()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        QCOMPARE(viewWalk::unnamedControls(room.view.get()).join(u'\n'), QString());
    }

    void thePageScrollsByKeyWhereverTheFocusIs()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        room.button(u"Reload Today's Lessons"_s)->setFocus();
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QVERIFY(room.page()->verticalScrollBar()->value() > 100);
    }
};

QUILLET_TEST(SettingsViewTest, runViewTest<SettingsViewTest>);

#include "SettingsViewTest.moc"
