// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QTest>

/// One program for many test classes. CTest runs each by its name: `app-tests AppSettingsTest [ARGUMENT...]`.
namespace corvane {

/// Registers a test class with its program.
class TestEntry {
public:
    /// Creates the application object that the class needs, runs the class and returns the number of
    /// failures. `argv` is the command line without the class name.
    using Run = int (*)(int argc, char *argv[]);

    /// `name` is the class name, a string literal.
    TestEntry(const char *name, Run run);
};

/// Runs a class that needs only an application object.
template <typename Test, typename Application = QCoreApplication>
int runTest(int argc, char *argv[])
{
    const Application application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Removes `option` from the command line if it is the first argument; returns whether it was.
bool takeOption(const char *option, int &argc, char **&argv);

} // namespace corvane

/// Put this at the end of a test class's file; the second argument runs the class: runTest<Class> or a custom
/// TestEntry::Run.
#define QUILLET_TEST(Class, ...) static const ::corvane::TestEntry Class##Entry(#Class, __VA_ARGS__)
