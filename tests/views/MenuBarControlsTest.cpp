// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "tests/support/Pictures.h"
#include "tests/views/MenuBarFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The panel by keyboard and pointer, and for assistive tools.
class MenuBarControlsTest final : public MenuBarFixture {
    Q_OBJECT

private Q_SLOTS:
    void tabGoesFromTopToBottom()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QCoreApplication::processEvents();
        QStringList names;
        for (int press = 0; press < 9; ++press) {
            QWidget *focused = QApplication::focusWidget();
            QVERIFY(focused != nullptr);
            names << accessible(focused).text(QAccessible::Name);
            QTest::keyClick(view.get(), Qt::Key_Tab);
        }
        QCOMPARE(names, (QStringList{u"All today"_s, u"Today\u2019s schedule"_s, u"Test Notification"_s,
                                     u"Quick Start"_s, u"User Manual"_s, u"About Quillet"_s, u"Settings"_s,
                                     u"Show Debug Window"_s, u"Quit Quillet"_s}));
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"All today"_s);
        QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Quit Quillet"_s);
    }

    void tabSkipsTheRowsWhenAllAreVisible()
    {
        Fixture f;
        f.start({sampleLesson(u"A"_s, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Compact"_s);
        QTest::keyClick(view.get(), Qt::Key_Tab);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Test Notification"_s);
    }

    void arrowKeysMoveTheSwitch()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QCOMPARE(rowTexts(*view).size(), 40);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"All today"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void aClickMovesTheSwitch()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        auto *picker = view->findChild<look::SegmentedControl *>();
        QTest::mouseClick(picker->findChildren<QAbstractButton *>().at(1), Qt::LeftButton);
        QCOMPARE(rowTexts(*view).size(), 40);
        QTest::mouseClick(picker->findChildren<QAbstractButton *>().at(0), Qt::LeftButton);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void theRowsScrollByKeyboardAndWheel()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        auto *scroll = view->findChild<look::ScrollView *>();
        QScrollBar &bar = barOf(*view);
        scroll->setFocus(Qt::TabFocusReason);
        QTest::keyClick(scroll, Qt::Key_Home);
        QCOMPARE(bar.value(), 0);
        const auto key = [&](Qt::Key pressed) {
            const int before = bar.value();
            QTest::keyClick(scroll, pressed);
            return bar.value() - before;
        };
        QVERIFY(key(Qt::Key_Down) > 0);
        QVERIFY(key(Qt::Key_Up) < 0);
        QVERIFY(key(Qt::Key_PageDown) > 200);
        QVERIFY(key(Qt::Key_PageUp) < -200);
        QVERIFY(key(Qt::Key_Space) > 200);
        QVERIFY(key(Qt::Key_End) > 0);
        QCOMPARE(bar.value(), bar.maximum());
        const QPointF middle = scroll->viewport()->rect().center();
        QWheelEvent wheel(middle, scroll->viewport()->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(scroll->viewport(), &wheel);
        QVERIFY(bar.value() < bar.maximum());
    }

    void everyControlHasANameAndARole()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        for (auto *command : view->findChildren<QPushButton *>()) {
            QCOMPARE(accessible(command).role(), QAccessible::Button);
            QCOMPARE(accessible(command).text(QAccessible::Name), command->text());
        }
        auto *picker = view->findChild<look::SegmentedControl *>();
        QCOMPARE(accessible(picker).text(QAccessible::Name), u"Schedule view"_s);
        const auto segments = picker->findChildren<QAbstractButton *>();
        QCOMPARE(accessible(segments.at(0)).text(QAccessible::Name), u"Compact"_s);
        QCOMPARE(accessible(segments.at(1)).text(QAccessible::Name), u"All today"_s);
        QCOMPARE(accessible(segments.at(1)).role(), QAccessible::RadioButton);
        QCOMPARE(accessible(view->findChild<look::ScrollView *>()).text(QAccessible::Name),
                 u"Today\u2019s schedule"_s);
    }

    void eachRowIsOneAccessibleListItem()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QAccessibleInterface &list = accessible(&listOf(*view));
        QCOMPARE(list.role(), QAccessible::List);
        QCOMPARE(list.childCount(), 3);
        for (int index = 0; index < 3; ++index) {
            QAccessibleInterface *row = list.child(index);
            QCOMPARE(row->role(), QAccessible::ListItem);
            QCOMPARE(row->childCount(), 0);
            QCOMPARE(row->text(QAccessible::Name), rowTexts(*view).at(index));
        }
    }
};

QUILLET_TEST(MenuBarControlsTest, runViewTest<MenuBarControlsTest>);

#include "MenuBarControlsTest.moc"
