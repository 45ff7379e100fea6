// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/Pictures.h"
#include "tests/views/SettingsFixture.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The settings of the reminders and their display.
class SettingsRemindersTest final : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void aStoredDurationOfSevenSecondsShowsFiveAndPickingTenStoresTen()
    {
        SettingsRoom room;
        room.settings.setNotificationDuration(7.0);
        auto *duration = room.picker(u"Notification Duration"_s);
        QCOMPARE(duration->currentText(), u"5 seconds"_s);
        room.show();
        SettingsRoom::choose(duration, u"10 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 10.0);
        QCOMPARE(room.stored(u"notificationDuration"_s).toDouble(), 10.0);
    }

    void aStoredDurationBetweenTheOptionsIsKeptUntilOneIsChosen()
    {
        SettingsRoom room;
        room.settings.setNotificationDuration(7.5);
        room.show();
        auto *duration = room.picker(u"Notification Duration"_s);
        QCOMPARE(duration->currentText(), u"5 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 7.5);
        SettingsRoom::choose(duration, u"5 seconds"_s); // the one already shown
        QCOMPARE(room.settings.notificationDuration(), 5.0);
    }

    void theSwitchesAreSavedAtOnce()
    {
        SettingsRoom room;
        auto *sound = room.toggle(u"Play sound with reminders"_s);
        QVERIFY(sound->isChecked());
        sound->click();
        QCOMPARE(room.settings.playsSound(), false);
        QCOMPARE(room.stored(u"playsSound"_s).toBool(), false);
        auto *login = room.toggle(u"Start Quillet when I log in"_s);
        QVERIFY(login->isChecked());
        QVERIFY(room.loginItem.isRegistered);
        login->click();
        QCOMPARE(room.stored(u"startAtLogin"_s).toBool(), false);
        QVERIFY(!room.loginItem.isRegistered);
        login->click();
        QVERIFY(room.loginItem.isRegistered);
    }

    void theSwitchesAreSavedWhenAnAssistiveToolTogglesThem()
    {
        const SettingsRoom room;
        for (const QString &text : {u"Play sound with reminders"_s, u"Start Quillet when I log in"_s}) {
            auto *interface = QAccessible::queryAccessibleInterface(room.toggle(text))->actionInterface();
            QVERIFY(interface->actionNames().contains(QAccessibleActionInterface::toggleAction()));
            interface->doAction(QAccessibleActionInterface::toggleAction());
        }
        QCOMPARE(room.settings.playsSound(), false);
        QCOMPARE(room.stored(u"playsSound"_s).toBool(), false);
        QCOMPARE(room.settings.startAtLogin(), false);
        QVERIFY(!room.loginItem.isRegistered);
    }

    void eachPopupPositionCanBeChosen()
    {
        SettingsRoom room;
        room.show();
        auto *position = room.picker(u"Popup Position"_s);
        QCOMPARE(position->currentText(), u"Center"_s);
        for (const NotificationPosition choice : allNotificationPositions) {
            SettingsRoom::choose(position, title(choice));
            QCOMPARE(room.settings.notificationPosition(), choice);
            QCOMPARE(room.stored(u"notificationPosition"_s).toString(), rawValue(choice));
        }
    }

    void aChangeMadeElsewhereIsShownAtOnceAndNotWrittenBack()
    {
        SettingsRoom room;
        room.settings.setPlaysSound(false);
        room.settings.setStartAtLogin(false);
        room.settings.setNotificationPosition(NotificationPosition::bottomLeft);
        room.settings.setNotificationDuration(6.0);
        QVERIFY(!room.toggle(u"Play sound with reminders"_s)->isChecked());
        QVERIFY(!room.toggle(u"Start Quillet when I log in"_s)->isChecked());
        QCOMPARE(room.picker(u"Popup Position"_s)->currentText(), u"Bottom Left"_s);
        QCOMPARE(room.picker(u"Notification Duration"_s)->currentText(), u"5 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 6.0);
        room.settings.setManualLessons({entry(u"Anna"_s)});
        QVERIFY(room.button(u"Remove"_s) != nullptr);
        QCOMPARE(room.reloads, 0);
    }
};

QUILLET_TEST(SettingsRemindersTest, runViewTest<SettingsRemindersTest>);

#include "SettingsRemindersTest.moc"
