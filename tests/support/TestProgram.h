// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QTest>

/// One program for many test classes: CTest runs each by its name, `app-tests AppSettingsTest [ARGUMENT...]`.
namespace corvane {

/// Enters a test class into its program.
class TestEntry {
public:
    /// Makes the application object the class needs, runs the class and returns the number of its failures.
    /// `argv` is the command line without the class's name.
    using Run = int (*)(int argc, char *argv[]);

    /// `name` is a literal.
    TestEntry(const char *name, Run run);
};

/// Runs a class that needs no more than an application object.
template <typename Test, typename Application = QCoreApplication>
int runTest(int argc, char *argv[])
{
    const Application application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Takes `option` out of the command line if it comes first, and says whether it did.
bool takeOption(const char *option, int &argc, char **&argv);

} // namespace corvane

/// At the end of a test class's file: how the class runs, runTest<Class> or a function of its own.
#define QUILLET_TEST(Class, ...) static const ::corvane::TestEntry Class##Entry(#Class, __VA_ARGS__)
