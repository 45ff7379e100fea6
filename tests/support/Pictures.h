// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QImage>
#include <QString>

#include <type_traits>

/// Compares pictures of views pixel by pixel with references that were reviewed when they were made.
namespace corvane::pictures {

/// Sets the environment variables that pictures depend on: fonts, resolution, scale factor. Call it before
/// creating the application object. `scaleFactor` is 1 or 2.
void prepareEnvironment(int scaleFactor);

enum class Theme { light, dark };

/// Sets the application's style, palette and font, and stops the cursor's blinking. The font size is
/// `fontScale` times the usual one. Call it again to change theme and font size for widgets created
/// afterwards.
void prepareApplication(Theme theme = Theme::light, double fontScale = 1);

/// Compares `picture` with the reference `name` for this version of Qt. Returns an empty string when they are
/// equal; otherwise writes the picture to a file and returns what is wrong and that path. A picture that is
/// right becomes the new reference.
[[nodiscard]] QString difference(const QImage &picture, const QString &name);

} // namespace corvane::pictures

namespace corvane {

/// Runs a view test class at scale factor 1, or 2 if the first argument is "--twice". The class's constructor
/// gets the scale factor if it takes an int.
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
