// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QSize>
#include <QString>
#include <QStringList>

namespace corvane {

/// A private Wayland compositor in a window at the upper left corner of the test's X display. It contains an
/// X server. The constructor ends the test program if the compositor does not come up; the destructor ends
/// the compositor.
class TestCompositor {
public:
    /// sway offers overlay surfaces, GNOME's mutter does not.
    enum class Kind { sway, mutter };

    explicit TestCompositor(QSize size, int monitors = 1, Kind kind = Kind::sway);
    ~TestCompositor();
    TestCompositor(const TestCompositor &) = delete;
    TestCompositor &operator=(const TestCompositor &) = delete;

    /// The environment for programs that run inside the compositor.
    [[nodiscard]] const QProcessEnvironment &environment() const { return m_environment; }

    /// Points WAYLAND_DISPLAY at this compositor, for later connections of the test program.
    void enter() const;

    /// Points DISPLAY at this compositor's X server.
    void enterX11() const;

    /// Unplugs the monitor `output` of a sway. Returns false if the compositor has no such command.
    [[nodiscard]] bool unplug(const QString &output) const;

    /// Has a sway execute `command`, waits for it and returns the answer. Ends the test program on an
    /// error.
    [[nodiscard]] QString execute(const QStringList &command) const;

    /// Sends this signal to the compositor.
    void signal(int number) const;

    /// Ends the compositor before the object is destroyed.
    void end();

private:
    QProcess m_process;
    QProcessEnvironment m_environment;
};

} // namespace corvane
