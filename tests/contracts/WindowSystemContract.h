// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QTest>

namespace corvane {

/// What every implementation of WindowSystem must do. A test class derives from it and provides the window
/// system, windows of the program, and another program that can take the keyboard focus.
class WindowSystemContract : public QObject {
    Q_OBJECT

protected:
    /// The window system under test, new for each test.
    virtual WindowSystem &windowSystem() = 0;
    /// Switches compositing, with which windows can be translucent, on or off.
    virtual void setComposited(bool isComposited) = 0;
    /// Creates a hidden window, which lives until destroy() or the end of the test.
    virtual WindowId makeWindow() = 0;
    virtual void show(WindowId window) = 0;
    virtual void destroy(WindowId window) = 0;
    /// Whether a task bar lists `window`, which is shown.
    [[nodiscard]] virtual bool isInTaskBar(WindowId window) = 0;
    [[nodiscard]] virtual bool hasFocus(WindowId window) = 0;
    /// The user clicks into another program's window, which has the keyboard focus when this returns.
    virtual void giveFocusToAnotherProgram() = 0;

    /// The user presses a button where no window of the program is, or in the middle of `window`.
    virtual void pressElsewhere() = 0;
    virtual void pressOn(WindowId window) = 0;

    static constexpr int timeout = 10'000; // milliseconds

private:
    [[nodiscard]] WindowId showWindow()
    {
        const WindowId window = makeWindow();
        show(window);
        return window;
    }

    /// The user asks the program for the window.
    void askFor(WindowId window, const QString &token = {})
    {
        windowSystem().userAsked(token);
        windowSystem().bringToFront(window);
    }

private Q_SLOTS:
    void compositingIsReportedCorrectly()
    {
        for (const bool isComposited : {true, false}) {
            setComposited(isComposited);
            QTRY_COMPARE_WITH_TIMEOUT(windowSystem().isComposited(), isComposited, timeout);
        }
    }

    void aWindowIsInTheTaskBarUnlessKeptOut()
    {
        const WindowId kept = makeWindow();
        windowSystem().keepOutOfTaskBar(kept);
        show(kept);
        const WindowId other = showWindow();
        QTRY_VERIFY_WITH_TIMEOUT(isInTaskBar(other), timeout);
        QTRY_VERIFY_WITH_TIMEOUT(!isInTaskBar(kept), timeout);
    }

    void aWindowTakesTheKeyboardFromAnotherProgram()
    {
        const WindowId window = showWindow();
        giveFocusToAnotherProgram();
        QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), timeout);
        askFor(window);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), timeout);
    }

    void eachRequestBringsTheWindowToTheFront()
    {
        const WindowId window = showWindow();
        for (int time = 0; time < 2; ++time) {
            giveFocusToAnotherProgram();
            QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), timeout);
            askFor(window);
            QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), timeout);
        }
    }

    void theWindowRequestedLastHasTheKeyboard()
    {
        const WindowId first = showWindow();
        const WindowId second = showWindow();
        for (const WindowId window : {first, second, first}) {
            askFor(window);
            QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), timeout);
        }
        QVERIFY(!hasFocus(second));
    }

    void anyTokenIsAccepted()
    {
        const WindowId window = showWindow();
        for (const QString &token :
             {QStringLiteral("token"), QStringLiteral("x_TIME0"), QString(5000, u'x')}) {
            giveFocusToAnotherProgram();
            QTRY_VERIFY_WITH_TIMEOUT(!hasFocus(window), timeout);
            askFor(window, token);
            QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), timeout);
        }
    }

    void aPressElsewhereIsReportedUntilTheWatchEnds()
    {
        const WindowId window = showWindow();
        int presses = 0;
        QVERIFY(windowSystem().watchPresses([&presses] { ++presses; }));
        pressElsewhere();
        QTRY_COMPARE_WITH_TIMEOUT(presses, 1, timeout);
        pressOn(window);
        pressElsewhere();
        QTRY_COMPARE_WITH_TIMEOUT(presses, 2, timeout);
        int later = 0;
        windowSystem().watchPresses([&later] { ++later; });
        pressElsewhere();
        QTRY_COMPARE_WITH_TIMEOUT(later, 1, timeout);
        QVERIFY(!windowSystem().watchPresses({}));
        pressElsewhere();
        QCOMPARE(presses, 2);
        QCOMPARE(later, 1);
    }

    void aPressMayEndTheWatch()
    {
        int presses = 0;
        windowSystem().watchPresses([this, &presses] {
            ++presses;
            windowSystem().watchPresses({});
        });
        pressElsewhere();
        pressElsewhere();
        QTRY_COMPARE_WITH_TIMEOUT(presses, 1, timeout);
    }

    void aDestroyedWindowIsIgnored()
    {
        const WindowId gone = showWindow();
        const WindowId window = showWindow();
        destroy(gone);
        windowSystem().keepOutOfTaskBar(gone);
        askFor(gone);
        askFor(window);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(window), timeout);
    }
};

} // namespace corvane
