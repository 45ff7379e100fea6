// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/WindowPresentation.h"

#include "Corvane/Views/WindowScenes.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/Pictures.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

class WindowPresentationTest final : public QObject {
    Q_OBJECT

private:
    struct Program {
        FakeWindowSystem windowSystem;
        WindowScenes scenes{windowSystem};
        int made = 0;

        Program()
        {
            add(u"help"_s, u"Quillet Help"_s, {920, 620});
            add(u"setup"_s, u"Welcome to Quillet"_s, {680, 500});
        }

        void add(const QString &identifier, const QString &title, QSize size)
        {
            scenes.add({identifier, title, size, [this] {
                            ++made;
                            return std::make_unique<QLabel>(u"content"_s);
                        }});
        }

        void open(const QString &id, const QString &title)
        {
            WindowPresentation::open(
                id, title, [this](const QString &identifier) { scenes.open(identifier); }, windowSystem);
        }
    };

private Q_SLOTS:
    void aWindowIsOpenedWithItsTitleAndSize()
    {
        Program program;
        program.open(u"setup"_s, u"Welcome to Quillet"_s);
        const QWidget *window = program.scenes.window(u"setup"_s);
        QVERIFY(window != nullptr);
        QVERIFY(window->isVisible());
        QCOMPARE(window->windowTitle(), u"Welcome to Quillet"_s);
        QCOMPARE(window->size(), QSize(680, 500));
        QVERIFY(program.scenes.window(u"help"_s) == nullptr);
    }

    void theProgramIsEntitledFirstAndTheWindowIsRaisedOnTheNextTurn()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        QCOMPARE(program.windowSystem.calls, (QStringList{u"asked"_s, u"kept out"_s}));
        QCoreApplication::processEvents();
        QCOMPARE(program.windowSystem.calls, (QStringList{u"asked"_s, u"kept out"_s, u"front"_s}));
        const WindowId id = program.scenes.window(u"help"_s)->winId();
        QCOMPARE(program.windowSystem.keptOut, QList<WindowId>{id});
        QCOMPARE(program.windowSystem.broughtToFront, QList<WindowId>{id});
    }

    void eachWindowExistsAtMostOnceAndComesToTheFrontAgain()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        program.open(u"setup"_s, u"Welcome to Quillet"_s);
        const QWidget *first = program.scenes.window(u"help"_s);
        program.open(u"help"_s, u"Quillet Help"_s);
        QCOMPARE(program.made, 2);
        QCOMPARE(program.scenes.window(u"help"_s), first);
        QCoreApplication::processEvents();
        QCOMPARE(
            program.windowSystem.broughtToFront,
            (QList<WindowId>{first->winId(), program.scenes.window(u"setup"_s)->winId(), first->winId()}));
    }

    void aWindowWhoseTitleDiffersByCaseIsOpenedButNotRaised()
    {
        Program program;
        program.open(u"help"_s, u"quillet help"_s);
        QCoreApplication::processEvents();
        QVERIFY(program.scenes.window(u"help"_s)->isVisible());
        QCOMPARE(program.windowSystem.broughtToFront, QList<WindowId>());
    }

    void aMinimizedWindowComesBack()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        QWidget *window = program.scenes.window(u"help"_s);
        window->showMinimized();
        program.open(u"help"_s, u"Quillet Help"_s);
        QCoreApplication::processEvents();
        QVERIFY(!window->isMinimized());
        QCOMPARE(program.made, 1);
    }

    void aClosedWindowIsDestroyedAndMadeAnew()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        QCoreApplication::processEvents();
        program.windowSystem.broughtToFront.clear();
        const QPointer<QWidget> window = program.scenes.window(u"help"_s);
        window->close();
        QVERIFY(program.scenes.window(u"help"_s) == nullptr);
        // Opened again before the closed one is gone, it is another one, and that one is raised.
        program.open(u"help"_s, u"Quillet Help"_s);
        QCOMPARE(program.made, 2);
        QWidget *second = program.scenes.window(u"help"_s);
        QVERIFY(second != nullptr && second != window);
        const WindowId id = second->winId();
        QTRY_VERIFY(window.isNull());
        QTRY_COMPARE(program.windowSystem.broughtToFront, QList<WindowId>{id});
        QVERIFY(program.scenes.window(u"help"_s)->isVisible());
    }

    void aWindowClosedBeforeTheNextTurnIsNotRaised()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        program.scenes.window(u"help"_s)->close();
        QCoreApplication::processEvents();
        QCOMPARE(program.windowSystem.broughtToFront, QList<WindowId>());
    }

    void closingTheLastWindowDoesNotEndTheProgram()
    {
        Program program;
        bool isEnding = false;
        const auto watch =
            connect(qApp, &QCoreApplication::aboutToQuit, this, [&isEnding] { isEnding = true; });
        program.open(u"help"_s, u"Quillet Help"_s);
        program.scenes.window(u"help"_s)->close();
        QCoreApplication::processEvents();
        QVERIFY(!isEnding);
        disconnect(watch);
    }

    void anUnknownIdentifierOpensNothing()
    {
        Program program;
        QVERIFY(program.scenes.has(u"help"_s));
        QVERIFY(!program.scenes.has(u"about"_s));
        program.open(u"about"_s, u"About Quillet"_s);
        QCoreApplication::processEvents();
        QCOMPARE(program.made, 0);
        QVERIFY(program.windowSystem.broughtToFront.isEmpty());
    }

    void aWindowFitsItsScreen()
    {
        Program program;
        program.add(u"large"_s, u"Large"_s, {90000, 60000});
        program.open(u"large"_s, u"Large"_s);
        const QWidget *window = program.scenes.window(u"large"_s);
        QCOMPARE(window->size(), window->screen()->availableSize());
    }

    void theWindowsGoWithTheirScenes()
    {
        auto program = std::make_unique<Program>();
        program->open(u"help"_s, u"Quillet Help"_s);
        const QPointer<QWidget> window = program->scenes.window(u"help"_s);
        QCoreApplication::processEvents();
        program.reset();
        QVERIFY(window.isNull());
    }
};

QUILLET_TEST(WindowPresentationTest, runViewTest<WindowPresentationTest>);

#include "WindowPresentationTest.moc"
