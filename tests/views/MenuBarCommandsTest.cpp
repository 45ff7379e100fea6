// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/Pictures.h"
#include "tests/views/MenuBarFixture.h"

#include <QPushButton>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The panel's commands.
class MenuBarCommandsTest final : public MenuBarFixture {
    Q_OBJECT

private Q_SLOTS:
    void theCommandsAreInOrder()
    {
        Fixture f;
        const auto view = f.view();
        QStringList texts;
        int below = 0;
        (void)view->grab();
        for (const auto *command : view->findChildren<QPushButton *>()) {
            texts << command->text();
            QVERIFY(command->isEnabled());
            QVERIFY(command->y() > below);
            below = command->geometry().bottom();
        }
        QCOMPARE(texts,
                 (QStringList{u"Test Notification"_s, u"Quick Start"_s, u"User Manual"_s, u"About Quillet"_s,
                              u"Settings"_s, u"Show Debug Window"_s, u"Quit Quillet"_s}));
    }

    void aCommandWithoutAWindowIsLeftOut()
    {
        Fixture f;
        f.actions.hasWindow = [](const WindowName &window) { return window == windowNames::about(); };
        const auto view = f.view();
        QCOMPARE(view->findChildren<QPushButton *>().size(), 3);
    }

    void eachCommandActsWhenItIsClicked()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        const auto click = [&view](const QString &text) {
            QTest::mouseClick(&button(*view, text), Qt::LeftButton);
        };
        click(u"Test Notification"_s);
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
        click(u"Quick Start"_s);
        click(u"User Manual"_s);
        click(u"About Quillet"_s);
        click(u"Settings"_s);
        QCOMPARE(f.opened, (std::vector{windowNames::setup(), windowNames::help(), windowNames::about(),
                                        windowNames::settings()}));
        click(u"Quit Quillet"_s);
        QCOMPARE(f.quits, 1);
    }

    void quickStartReopensACompletedSetup()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        button(*view, u"Quick Start"_s).click();
        QCOMPARE(f.opened, std::vector{windowNames::setup()});
    }

    void afterACompletedSetupAppearingOpensNothing()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        QCoreApplication::processEvents();
        QVERIFY(f.opened.empty() && f.openedBeside.empty());
    }

    void untilSetupIsCompletedEachAppearanceBringsItForward()
    {
        Fixture f;
        const auto view = f.shown();
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside, std::vector{windowNames::setup()});
        view->hide();
        view->show();
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside.size(), std::size_t{2});
        QVERIFY(!f.settings.hasCompletedWelcome());
    }

    void ctrlQQuitsAtOnce()
    {
        Fixture f;
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(view.get(), Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
        QTest::keyClick(view.get(), Qt::Key_Q);
        QCOMPARE(f.quits, 1);
    }

    void ctrlQQuitsWhileAnotherWindowHasTheFocus()
    {
        Fixture f;
        const auto view = f.shown();
        QWidget beside;
        beside.show();
        beside.activateWindow();
        QTRY_VERIFY(beside.isActiveWindow());
        QTest::keyClick(&beside, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
        view->hide();
        QTest::keyClick(&beside, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
    }

    void enterAndSpacePressACommand()
    {
        Fixture f;
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        auto &quit = button(*view, u"Quit Quillet"_s);
        quit.setFocus(Qt::TabFocusReason);
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            QTest::keyClick(&quit, key);
        }
        QCOMPARE(f.quits, 3);
    }
};

QUILLET_TEST(MenuBarCommandsTest, runViewTest<MenuBarCommandsTest>);

#include "MenuBarCommandsTest.moc"
