// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QSize>
#include <QString>
#include <QStringList>

namespace corvane {

/// A Wayland compositor of a test's own, in a window that fills the test's X display from its upper left
/// corner; with overlays, and with an X server in it. Ended with the object. One that does not come up ends
/// the test program.
class TestCompositor {
public:
    explicit TestCompositor(QSize size, int monitors = 1);
    ~TestCompositor();
    TestCompositor(const TestCompositor &) = delete;
    TestCompositor &operator=(const TestCompositor &) = delete;

    /// What a program in it finds in its environment.
    [[nodiscard]] const QProcessEnvironment &environment() const { return m_environment; }

    /// Has the program's own further connections to a compositor go to this one.
    void enter() const;

    /// Takes the monitor `output` away; false where the compositor has no command for it.
    [[nodiscard]] bool unplug(const QString &output) const;

    /// Has the compositor execute a command, and waits until that is done; its answer.
    [[nodiscard]] QString execute(const QStringList &command) const;

    /// Ends it before the object is destroyed.
    void end();

private:
    QProcess m_process;
    QProcessEnvironment m_environment;
};

} // namespace corvane
