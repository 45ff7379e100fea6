// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CorvaneApp.h"
#include "Corvane/App/EndSignals.h"
#include "Corvane/Platform/Linux/Freedesktop/SingleInstance.h"
#include "Corvane/Utilities/Spawn.h"

#include <QApplication>
#include <QDBusConnection>
#include <QTimer>

#include <malloc.h>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;
using namespace corvane;

namespace {

/// In a Wayland session the windows go through the X server that most of them have: there they can be placed,
/// and stand above a full-screen one. Where there is none the toolkit is told so, which guesses from the kind
/// of session alone.
void choosePlatform()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if ((platform.isEmpty() || platform.startsWith("wayland")) &&
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsEmpty("DISPLAY") ? "wayland" : "xcb");
    }
}

void say(const char *text)
{
    std::fputs(text, stderr);
}

/// Starts the program unless another one runs already. Both outlive the event loop.
QCoro::Task<void> launch(SingleInstance *instance, std::optional<CorvaneApp> *program)
{
    const QString token = SingleInstance::takeActivationToken();
    // Not awaited in the switch itself: GCC 12 loses the frame there.
    const SingleInstance::Start start = co_await instance->claim(token);
    switch (start) {
    case SingleInstance::Start::first:
        // As the login entry has it.
        program->emplace(QCoreApplication::arguments().contains(u"--login"_s) ? CorvaneApp::StartedBy::login
                                                                              : CorvaneApp::StartedBy::user);
        co_return;
    case SingleInstance::Start::handedOver:
        say("Quillet is running already; look for its bell in the panel.\n");
        QCoreApplication::exit(0);
        co_return;
    case SingleInstance::Start::otherSilent:
        say("Quillet is running already, but does not answer. End it before starting it again.\n");
        QCoreApplication::exit(1);
        co_return;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    // The few worker threads sleep nearly always; a heap of its own for each would keep memory for nothing.
    mallopt(M_ARENA_MAX, 2);
    choosePlatform();
    QCoreApplication::setApplicationName(u"Quillet"_s);
    QApplication::setDesktopFileName(u"com.ordwinsoftware.Quillet"_s);
    QApplication application(argc, argv);
    const EndSignals endSignals;
    QObject::connect(&endSignals, &EndSignals::received, &application, &QCoreApplication::quit);

    SingleInstance instance(QDBusConnection::sessionBus(), SingleInstance::userLockDirectories());
    // Destroyed before the instance: the name is given up when nothing of the program acts any more.
    std::optional<CorvaneApp> program;
    QObject::connect(&instance, &SingleInstance::quitRequested, &application, &QCoreApplication::quit);
    QObject::connect(&instance, &SingleInstance::activationRequested, &application,
                     [&program](const QString &token) {
                         if (program) {
                             program->activate(token);
                         }
                     });
    QObject::connect(&instance, &SingleInstance::busLost, &application, [&program] {
        if (program) {
            program->logger().log(u"session bus lost"_s, currentDate());
        }
    });
    // On the loop's first turn: exit() has no effect before the loop runs.
    QTimer::singleShot(0, &application, [&] { spawn(launch(&instance, &program)); });
    return QApplication::exec();
}
