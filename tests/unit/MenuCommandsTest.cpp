// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MenuCommands.h"

#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct MenuCommandsFixture : ViewModelFixture {
    MenuCommandsFixture() : ViewModelFixture("09:00:00") {}

    std::vector<WindowName> windows{windowNames::setup(), windowNames::help(), windowNames::about(),
                                    windowNames::settings(), windowNames::debug()};
    std::vector<WindowName> opened;
    std::vector<WindowName> openedBeside;
    int quits = 0;
    MenuActions actions{
        .hasWindow =
            [this](const WindowName &window) { return std::ranges::find(windows, window) != windows.end(); },
        .openWindow = [this](const WindowName &window) { opened.push_back(window); },
        .openWindowBeside = [this](const WindowName &window) { openedBeside.push_back(window); },
        .quit = [this] { ++quits; }};

    [[nodiscard]] std::vector<MenuCommand> commands() { return menuCommands(*model, actions); }

    [[nodiscard]] QStringList texts()
    {
        QStringList texts;
        for (const MenuCommand &command : commands()) {
            texts << (command.beginsGroup ? u"- "_s : QString()) + command.text;
        }
        return texts;
    }

    void press(const QString &text)
    {
        const std::vector<MenuCommand> all = commands();
        std::ranges::find(all, text, &MenuCommand::text)->action();
    }
};

} // namespace

class MenuCommandsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCommandsAreInOrder()
    {
        MenuCommandsFixture f;
        QCOMPARE(f.texts(), (QStringList{u"- Test Notification"_s, u"Quick Start"_s, u"User Manual"_s,
                                         u"About Quillet"_s, u"Settings"_s, u"Show Debug Window"_s,
                                         u"- Quit Quillet"_s}));
        QCOMPARE(f.commands().back().shortcut, u"Ctrl+Q"_s);
        QVERIFY(std::ranges::count(f.commands(), QString(), &MenuCommand::shortcut) == 6);
    }

    void aCommandWithoutAWindowIsLeftOut()
    {
        MenuCommandsFixture f;
        f.windows = {windowNames::about()};
        QCOMPARE(f.texts(), (QStringList{u"- Test Notification"_s, u"About Quillet"_s, u"- Quit Quillet"_s}));
        f.windows.clear();
        QCOMPARE(f.texts(), (QStringList{u"- Test Notification"_s, u"- Quit Quillet"_s}));
    }

    void eachCommandOpensItsWindow()
    {
        MenuCommandsFixture f;
        f.press(u"Quick Start"_s);
        f.press(u"User Manual"_s);
        f.press(u"About Quillet"_s);
        f.press(u"Settings"_s);
        f.press(u"Show Debug Window"_s);
        QCOMPARE(f.opened, (std::vector<WindowName>{{u"setup"_s, u"Welcome to Quillet"_s},
                                                    {u"help"_s, u"Quillet Help"_s},
                                                    {u"about"_s, u"About Quillet"_s},
                                                    {u"settings"_s, u"Quillet Settings"_s},
                                                    {u"debug"_s, u"Debug Window"_s}}));
    }

    void testNotificationRaisesABanner()
    {
        MenuCommandsFixture f;
        f.press(u"Test Notification"_s);
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
        QVERIFY(f.opened.empty());
    }

    void quitQuits()
    {
        MenuCommandsFixture f;
        f.press(u"Quit Quillet"_s);
        QCOMPARE(f.quits, 1);
    }

    void quickStartReopensACompletedSetup()
    {
        MenuCommandsFixture f;
        f.settings.setHasCompletedWelcome(true);
        f.press(u"Quick Start"_s);
        QCOMPARE(f.opened, std::vector<WindowName>{windowNames::setup()});
    }

    void eachAppearanceBringsSetupForwardUntilItIsCompleted()
    {
        MenuCommandsFixture f;
        openSetupUnlessCompleted(*f.model, f.actions);
        QVERIFY(f.openedBeside.empty()); // not before the next turn of the event loop
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside, std::vector<WindowName>{windowNames::setup()});
        menuContentAppeared(*f.model, f.actions);
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside.size(), std::size_t{2});
        QVERIFY(f.opened.empty() && !f.settings.hasCompletedWelcome());
        f.settings.setHasCompletedWelcome(true);
        menuContentAppeared(*f.model, f.actions);
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside.size(), std::size_t{2});
    }

    void aMissingSetupWindowIsNotOpened()
    {
        MenuCommandsFixture f;
        f.windows.clear();
        openSetupUnlessCompleted(*f.model, f.actions);
        QCoreApplication::processEvents();
        QVERIFY(f.openedBeside.empty());
    }

    void appearingReloadsTheLessons()
    {
        MenuCommandsFixture f;
        f.store.answer = std::vector{sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))};
        menuContentAppeared(*f.model, f.actions);
        QCoreApplication::processEvents();
        QCOMPARE(f.store.calls, 1);
        QCOMPARE(f.model->lessons().size(), std::size_t{1});
    }

    void aFloodOfAppearancesReloadsTheLessonsOnce()
    {
        MenuCommandsFixture f;
        f.store.answer = std::vector{sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))};
        for (int appearance = 0; appearance < 3000; ++appearance) {
            menuContentAppeared(*f.model, f.actions);
        }
        QCoreApplication::processEvents();
        QCOMPARE(f.store.calls, 1);
        QCOMPARE(f.openedBeside.size(), std::size_t{1});
        // A reload from the settings is not delayed.
        spawn(f.model->reloadLessons());
        QCOMPARE(f.store.calls, 2);
        f.clock.advance(Seconds{1});
        menuContentAppeared(*f.model, f.actions);
        QCOMPARE(f.store.calls, 3);
    }

    void aModelDestroyedBeforeTheNextTurnOpensNothing()
    {
        MenuCommandsFixture f;
        openSetupUnlessCompleted(*f.model, f.actions);
        f.model.reset();
        QCoreApplication::processEvents();
        QVERIFY(f.openedBeside.empty());
    }
};

QUILLET_TEST(MenuCommandsTest, runTest<MenuCommandsTest>);
#include "MenuCommandsTest.moc"
