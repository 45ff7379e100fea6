// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/WindowPresentation.h"

#include "Corvane/Views/WindowScenes.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/Pictures.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

class WindowPresentationTest final : public QObject {
    Q_OBJECT

private:
    struct Program {
        FakeWindowSystem windowSystem;
        FakeScreens screens;
        WindowScenes scenes{windowSystem, screens};
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

        void add(const QString &identifier, QSize size, std::unique_ptr<QWidget> (*makeContent)())
        {
            scenes.add({identifier, identifier, size, makeContent});
        }

        /// Two screens side by side that share the area of Qt's one screen; the pointer is on the right one.
        void useTwoScreens()
        {
            const QSizeF all = QGuiApplication::primaryScreen()->size();
            const Rect left{0, 0, all.width() / 2, all.height()};
            const Rect right{all.width() / 2, 0, all.width() / 2, all.height()};
            screens.main = Screen{.name = u"left"_s, .frame = left, .visibleFrame = left};
            screens.allScreens = {*screens.main, {.name = u"right"_s, .frame = right, .visibleFrame = right}};
            screens.pointer = {all.width() / 2 + 10, 10};
        }

        /// An open window's size at the top left corner of its frame.
        [[nodiscard]] QRect area(const QString &identifier) const
        {
            return {scenes.window(identifier)->pos(), scenes.window(identifier)->size()};
        }

        /// Closes the window and opens it again.
        void reopen(const QString &identifier)
        {
            scenes.window(identifier)->close();
            scenes.open(identifier);
        }

        void open(const QString &id, const QString &title)
        {
            WindowPresentation::open(
                id, title, [this](const QString &identifier) { scenes.open(identifier); }, windowSystem);
        }
    };

    /// How high a window's title bar is expected to be.
    static int titleBar() { return QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight); }

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

    void activationIsRequestedFirstAndTheWindowIsRaisedOnTheNextTurn()
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

    void aClosedWindowIsDestroyedAndRecreated()
    {
        Program program;
        program.open(u"help"_s, u"Quillet Help"_s);
        QCoreApplication::processEvents();
        program.windowSystem.broughtToFront.clear();
        const QPointer<QWidget> window = program.scenes.window(u"help"_s);
        window->close();
        QVERIFY(program.scenes.window(u"help"_s) == nullptr);
        // Opened before the closed one is destroyed, it is a new window, and the new one is raised.
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
        QCOMPARE(program.scenes.window(u"large"_s)->size(), QSize(1440, 875 - titleBar()));
    }

    void aWindowAsHighAsItsScreenStaysOnItWithItsTitleBar()
    {
        Program program;
        program.add(u"high"_s, {300, 870}, [] { return std::make_unique<QWidget>(); });
        program.scenes.open(u"high"_s);
        const QRect area = program.area(u"high"_s);
        QCOMPARE(area.height(), 875 - titleBar());
        // The fake screen's bottom is the bottom of Qt's screen.
        const int top = QGuiApplication::primaryScreen()->size().height() - 900;
        QCOMPARE(area.top(), top);
        program.add(u"almost as high"_s, {300, 860 - titleBar()}, [] { return std::make_unique<QWidget>(); });
        program.scenes.open(u"almost as high"_s);
        QCOMPARE(program.area(u"almost as high"_s).bottom(), top + 875 - 1 - titleBar());
    }

    void aWindowOpensInTheMiddleOfThePointersScreen()
    {
        Program program;
        program.useTwoScreens();
        program.add(u"small"_s, u"Small"_s, {200, 100});
        program.scenes.open(u"small"_s);
        const QSize half(QGuiApplication::primaryScreen()->size().width() / 2,
                         QGuiApplication::primaryScreen()->size().height());
        const QPoint middle((half.width() - 200) / 2, (half.height() - 100) / 2);
        QCOMPARE(program.area(u"small"_s), QRect(middle + QPoint(half.width(), 0), QSize(200, 100)));
        program.screens.pointer = {10, 10};
        program.reopen(u"small"_s); // the user did not move it
        QCOMPARE(program.area(u"small"_s), QRect(middle, QSize(200, 100)));
    }

    void aMovedOrResizedWindowReopensWhereItWasClosed()
    {
        Program program;
        program.useTwoScreens();
        program.add(u"small"_s, u"Small"_s, {200, 100});
        program.scenes.open(u"small"_s);
        const QRect before = program.area(u"small"_s);
        program.scenes.window(u"small"_s)->move(30, 40);
        program.reopen(u"small"_s);
        QCOMPARE(program.area(u"small"_s), QRect(QPoint(30, 40), before.size()));
        program.scenes.window(u"small"_s)->resize(260, 150);
        program.reopen(u"small"_s);
        program.reopen(u"small"_s);
        QCOMPARE(program.area(u"small"_s), QRect(30, 40, 260, 150));
        program.scenes.window(u"small"_s)->showMaximized();
        program.reopen(u"small"_s);
        QVERIFY(program.scenes.window(u"small"_s)->isMaximized());
    }

    void contentWithHeightForWidthOpensTallEnough()
    {
        // Needs 50 points more height than its width.
        class Tall final : public QWidget {
        public:
            [[nodiscard]] bool hasHeightForWidth() const override { return true; }
            [[nodiscard]] int heightForWidth(int width) const override { return width + 50; }
        };
        Program program;
        const auto tall = []() -> std::unique_ptr<QWidget> { return std::make_unique<Tall>(); };
        program.add(u"needs more"_s, {300, 200}, tall);
        program.add(u"needs less"_s, {300, 400}, tall);
        program.add(u"needs too much"_s, {1200, 400}, tall);
        for (const auto &[identifier, size] :
             {std::pair(u"needs more"_s, QSize(300, 350)), std::pair(u"needs less"_s, QSize(300, 400)),
              std::pair(u"needs too much"_s, QSize(1200, 875 - titleBar()))}) {
            program.scenes.open(identifier);
            QCOMPARE(program.scenes.window(identifier)->size(), size);
        }
    }

    void withoutAScreenAWindowKeepsItsSize()
    {
        Program program;
        program.screens.allScreens.clear();
        program.screens.main.reset();
        program.open(u"setup"_s, u"Welcome to Quillet"_s);
        QCOMPARE(program.scenes.window(u"setup"_s)->size(), QSize(680, 500));
    }

    void theWindowsAreDestroyedWithTheirScenes()
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
