// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QImage>
#include <QString>

#include <type_traits>

/// Pictures of views, compared to the last pixel with references that were looked at when they were made.
namespace corvane::pictures {

/// Sets what pictures depend on and the environment can tell: fonts, resolution, scale factor. Called before
/// the application object is made. `scaleFactor` is 1 or 2.
void prepareEnvironment(int scaleFactor);

enum class Theme { light, dark };

/// Sets what the application object can tell: style, palette, font, no blinking. Called again, it changes the
/// theme, and the size of the desktop's font to `fontScale` of the usual one, for widgets made from then on.
void prepareApplication(Theme theme = Theme::light, double fontScale = 1);

/// Compares `picture` with the reference `name` of this version of Qt. Empty when they are the same; else
/// what is wrong and where the picture was written, to be looked at and, if it is right, to become the
/// reference.
[[nodiscard]] QString difference(const QImage &picture, const QString &name);

} // namespace corvane::pictures

namespace corvane {

/// Runs a class of tests of views, which is constructed with the scale factor if it takes one: 2 with
/// "--twice" as the first argument.
template <typename Test>
int runViewTest(int argc, char *argv[])
{
    const int scaleFactor = takeOption("--twice", argc, argv) ? 2 : 1;
    pictures::prepareEnvironment(scaleFactor);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    pictures::prepareApplication();
    if constexpr (std::is_constructible_v<Test, int>) {
        Test test(scaleFactor);
        return QTest::qExec(&test, argc, argv);
    } else {
        Test test;
        return QTest::qExec(&test, argc, argv);
    }
}

} // namespace corvane
