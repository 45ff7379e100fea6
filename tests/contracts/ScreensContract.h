// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <QTest>

#include <algorithm>

namespace corvane {

/// What every implementation of Screens must do. A test class derives from it and provides at least one
/// screen.
class ScreensContract : public QObject {
    Q_OBJECT

protected:
    virtual Screens &screens() = 0;
    /// Opens a window of the program, which gets the keyboard focus, and closes it.
    virtual void openKeyWindow() = 0;
    virtual void closeKeyWindow() = 0;

private Q_SLOTS:
    void noScreenIsEmpty()
    {
        QVERIFY(!screens().screens().empty());
        for (const Screen &screen : screens().screens()) {
            QVERIFY(screen.frame.width > 0 && screen.frame.height > 0);
            QVERIFY(screen.visibleFrame.width > 0 && screen.visibleFrame.height > 0);
        }
    }

    void theVisiblePartLiesWithinTheScreen()
    {
        for (const auto &[name, frame, visible] : screens().screens()) {
            QVERIFY(visible.minX() >= frame.minX() && visible.maxX() <= frame.maxX());
            QVERIFY(visible.minY() >= frame.minY() && visible.maxY() <= frame.maxY());
        }
    }

    void screenNamesAreUnique()
    {
        QStringList names;
        for (const Screen &screen : screens().screens()) {
            QVERIFY(!names.contains(screen.name));
            names << screen.name;
        }
    }

    void theMainScreenIsAmongTheScreens()
    {
        const auto main = screens().mainScreen();
        QVERIFY(main.has_value());
        QVERIFY(std::ranges::count(screens().screens(), *main) == 1);
    }

    void thePointerIsOnExactlyOneScreen()
    {
        const Point pointer = screens().pointerLocation();
        QCOMPARE(std::ranges::count_if(screens().screens(),
                                       [&](const Screen &screen) { return screen.frame.contains(pointer); }),
                 1);
    }

    void theKeyWindowsScreenIsAmongTheScreensWhileItIsOpen()
    {
        QVERIFY(!screens().keyWindowScreen().has_value());
        openKeyWindow();
        QTRY_VERIFY_WITH_TIMEOUT(screens().keyWindowScreen().has_value(), 10000);
        QCOMPARE(std::ranges::count(screens().screens(), *screens().keyWindowScreen()), 1);
        closeKeyWindow();
        QTRY_VERIFY_WITH_TIMEOUT(!screens().keyWindowScreen().has_value(), 10000);
    }

    void repeatedCallsReturnTheSameScreens() { QVERIFY(screens().screens() == screens().screens()); }
};

} // namespace corvane
