// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FirstRunSetupView.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Views/SetupStep.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SetupRoom.h"

#include <QApplication>
#include <QScrollBar>
#include <QSettings>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

class FirstRunSetupViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void itShowsExactlyTheseTexts()
    {
        const QList<QStringList> pages{
            {u"Welcome to Quillet"_s,
             u"Quillet watches your lesson calendar and gives you clear prompts to wrap up and join your next lesson on time."_s,
             u"Back"_s, u"Continue"_s},
            {u"Allow Calendar Access"_s,
             u"When Quillet asks for permission, choose Allow. Calendar access lets the app read today's lesson times and titles. It never edits your calendar."_s,
             u"Back"_s, u"Continue"_s},
            {u"Check Your Notifications"_s,
             u"Use Test Notification from the menu-bar icon. You should see a banner and hear a sound. If either is missing, use the Troubleshooting section in Help."_s,
             u"Back"_s, u"Continue"_s},
            {u"Choose Your Preferences"_s,
             u"Open Settings from the menu-bar icon to choose banner position, display time, and sound. The default centre position is designed to be hard to miss during a lesson."_s,
             u"Back"_s, u"Continue"_s},
            {u"You Are Ready"_s,
             u"Keep Quillet running in your menu bar while you teach. It will guide you through the next transition so you can avoid late-start penalties."_s,
             u"Back"_s, u"Finish"_s}};
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            QCOMPARE(viewWalk::texts(*room.view), pages[page]);
        }
    }

    void thePagesHaveTheseSymbols()
    {
        QStringList symbols;
        for (const SetupStep &step : setupSteps()) {
            symbols << step.symbolName;
            QVERIFY2(look::hasSymbol(step.symbolName), qPrintable(step.symbolName));
        }
        QCOMPARE(symbols, (QStringList{u"graduationcap.fill"_s, u"calendar"_s, u"bell.badge.fill"_s,
                                       u"slider.horizontal.3"_s, u"checkmark.seal.fill"_s}));
    }

    void onTheFirstPageBackIsDisabledAndTheLastOneReadsFinish()
    {
        const SetupRoom room;
        QVERIFY(!room.back()->isEnabled());
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        room.goTo(1);
        QVERIFY(room.back()->isEnabled());
        room.goTo(3);
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        room.goTo(4);
        QCOMPARE(room.forward()->text(), u"Finish"_s);
        QVERIFY(room.back()->isEnabled());
    }

    void backLeadsToThePageBefore()
    {
        const SetupRoom room;
        room.goTo(4);
        room.back()->click();
        QCOMPARE(room.view->step(), 3);
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        for (int click = 0; click < 10; ++click) {
            room.back()->click();
        }
        QCOMPARE(room.view->step(), 0);
        QCOMPARE(viewWalk::texts(*room.view).first(), u"Welcome to Quillet"_s);
    }

    void finishingIsStoredAtOnceAndClosesTheWindow()
    {
        SetupRoom room;
        room.goTo(4);
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        room.forward()->click();
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
        QCOMPARE(QSettings(room.file->path(), QSettings::IniFormat).value(u"hasCompletedWelcome"_s).toBool(),
                 true);
        QCOMPARE(room.dismissals, 1);
    }

    void aCompletedSetupCanBeRepeated()
    {
        SetupRoom room(true);
        for (int page = 0; page < 5; ++page) {
            QCOMPARE(room.view->step(), page);
            QCOMPARE(room.settings.hasCompletedWelcome(), true);
            room.forward()->click();
        }
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
        QCOMPARE(room.dismissals, 1);
    }

    void closingItEarlyDoesNotFinishIt()
    {
        SetupRoom room;
        room.show();
        room.goTo(4);
        room.view->close();
        room.view.reset();
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        QCOMPARE(room.dismissals, 0);
    }

    void aNewWindowBeginsAtTheFirstPage()
    {
        SetupRoom room;
        room.goTo(3);
        const FirstRunSetupView other(room.settings, [] {});
        QCOMPARE(other.step(), 0);
    }

    void enterAndSpaceContinue()
    {
        SetupRoom room;
        room.show();
        QCOMPARE(room.view->focusWidget(), room.forward());
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Enter);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Space);
        QCOMPARE(room.view->step(), 3);
        QTest::keyClick(room.view.get(), Qt::Key_Return); // without focus on a button
        QCOMPARE(room.view->step(), 4);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QCOMPARE(room.dismissals, 1);
    }

    void aHeldEnterContinuesOnce()
    {
        const SetupRoom room;
        room.show();
        for (const bool isRepeat : {false, true, true, true}) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, isRepeat);
            QApplication::sendEvent(room.view->focusWidget(), &press);
        }
        QCOMPARE(room.view->step(), 1);
    }

    void tabReachesBothButtons()
    {
        const SetupRoom room;
        room.show();
        room.goTo(1);
        QStringList order = viewWalk::tabOrder(*room.view);
        order.sort();
        QCOMPARE(order, (QStringList{u"Back"_s, u"Continue"_s}));
    }

    void theFocusLeavesBackWhenItIsDisabled()
    {
        const SetupRoom room;
        room.show();
        room.goTo(1);
        room.back()->setFocus();
        QTest::keyClick(room.back(), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), room.forward());
    }

    void everythingHasAName()
    {
        const SetupRoom room;
        room.show();
        QCOMPARE(viewWalk::unnamedControls(room.view.get()).join(u'\n'), QString());
    }

    void theIndicatorNamesThePage()
    {
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            QCOMPARE(QAccessible::queryAccessibleInterface(room.indicator())->text(QAccessible::Name),
                     u"Page %1 of 5"_s.arg(page + 1));
        }
    }

    void bothButtonsAreDescribedByThePagesText()
    {
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            const SetupStep &step = setupSteps()[static_cast<std::size_t>(page)];
            for (QAbstractButton *button : {room.back(), room.forward()}) {
                QCOMPARE(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Description),
                         step.title + u". "_s + step.detail);
            }
        }
    }

    void aTallPageScrollsByKeyAndTheNextBeginsAtItsTop()
    {
        pictures::prepareApplication(Theme::light, 2);
        const SetupRoom room;
        room.view->resize(620, 420);
        room.show();
        const QScrollBar *bar = room.page()->verticalScrollBar();
        QVERIFY(bar->maximum() > 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QVERIFY(bar->value() > 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageUp);
        QCOMPARE(bar->value(), 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QCOMPARE(bar->value(), 0);
    }
};

QUILLET_TEST(FirstRunSetupViewTest, runViewTest<FirstRunSetupViewTest>);

#include "FirstRunSetupViewTest.moc"
