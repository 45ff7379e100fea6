// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/CorvaneApp.h"
#include "Corvane/App/EndSignals.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Platform/Linux/Freedesktop/SingleInstance.h"
#include "Corvane/Platform/Linux/Toolkit/DisplayChoice.h"
#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"
#include "Corvane/Platform/Linux/X11/DesktopScale.h"
#include "Corvane/Utilities/CommandLine.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/Spawn.h"

#include <QApplication>
#include <QByteArrayList>
#include <QDBusConnection>
#include <QFile>
#include <QTimer>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace corvane;

namespace {

/// The exit status after an unknown option.
constexpr int wrongUse = 2;

/// A user who sets one of these has scaled the toolkit's programs already.
constexpr std::array scaleVariables = {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"};

void say(const char *text)
{
    std::fputs(text, stderr);
}

/// Starts the program unless another instance is running. `instance` and `program` outlive the event loop.
QCoro::Task<void> launch(SingleInstance *instance, std::optional<CorvaneApp> *program,
                         CorvaneApp::StartedBy startedBy, std::function<void()> restart)
{
    const QString token = SingleInstance::takeActivationToken();
    // Not awaited inside the switch: GCC 12 loses the coroutine frame there.
    const SingleInstance::Start start = co_await instance->claim(
        token, startedBy == CorvaneApp::StartedBy::login ? SingleInstance::Wish::nothing
                                                         : SingleInstance::Wish::activation);
    switch (start) {
    case SingleInstance::Start::first:
        program->emplace(startedBy, restart);
        co_return;
    case SingleInstance::Start::handedOver:
        say("Quillet is running already; look for its bell in the panel.\n");
        QCoreApplication::exit(0);
        co_return;
    case SingleInstance::Start::leftAlone:
        // A desktop that restores a session may start the program twice.
        QCoreApplication::exit(0);
        co_return;
    case SingleInstance::Start::otherSilent:
        say("Quillet is running already, but does not answer. End it before starting it again.\n");
        QCoreApplication::exit(1);
        co_return;
    }
}

/// How a run ended, and the path to restart it from.
struct Run {
    int status = 0;
    bool startsAnew = false;
    QByteArray programPath;
};

/// Sets an environment variable during its lifetime. Programs that this one starts later, and a restart, get
/// the caller's value.
class TemporaryVariable {
public:
    TemporaryVariable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_before(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt)
    {
        qputenv(name, value);
    }
    ~TemporaryVariable()
    {
        if (m_before) {
            qputenv(m_name, *m_before);
        } else {
            qunsetenv(m_name);
        }
    }
    Q_DISABLE_COPY_MOVE(TemporaryVariable)

private:
    const char *m_name;
    std::optional<QByteArray> m_before;
};

/// Starts the toolkit on `platform`, at the desktop's scale.
void startToolkit(std::optional<QApplication> &application, const QByteArray &platform, int &argc,
                  char **argv)
{
    const TemporaryVariable chosenPlatform("QT_QPA_PLATFORM", platform);
    std::optional<TemporaryVariable> scale;
    const bool isScaled =
        std::ranges::any_of(scaleVariables, [](const char *name) { return qEnvironmentVariableIsSet(name); });
    if (platform.startsWith("xcb") && !isScaled &&
        desktopScale::isMissingOn(qgetenv("XDG_CURRENT_DESKTOP"))) {
        if (const auto factor = desktopScale::missingFactor(desktopScale::publishedSettings())) {
            scale.emplace("QT_SCALE_FACTOR", QByteArray::number(*factor));
        }
    }
    application.emplace(argc, argv);
    look::Style::install([] { return ToolkitWindowSystem().isComposited(); });
}

/// Keeps the heap small, because the program runs all day and is nearly always idle.
void limitHeap()
{
    // The few worker threads need no arena each.
    mallopt(M_ARENA_MAX, 1);
    // Pictures get memory of their own, which goes back at once. Otherwise the first large one would raise
    // this limit, and small blocks that outlive later pictures would keep the pages between them.
    constexpr int largestInHeap = 64 * 1024;
    mallopt(M_MMAP_THRESHOLD, largestInHeap);
    mallopt(M_TOP_PAD, 0);
}

Run run(int argc, char *argv[], CorvaneApp::StartedBy startedBy)
{
    const auto platform = displayChoice::platform(qgetenv("QT_QPA_PLATFORM"));
    if (!platform) {
        std::fprintf(stderr,
                     "Quillet has no screen: neither an X server nor a Wayland compositor answers "
                     "(DISPLAY=%s, WAYLAND_DISPLAY=%s).\n",
                     qgetenv("DISPLAY").constData(), qgetenv("WAYLAND_DISPLAY").constData());
        return {.status = 1, .programPath = {}};
    }
    std::optional<QApplication> application;
    startToolkit(application, *platform, argc, argv);
    // Read before an upgrade can replace the file, so that a restart runs the new program under the same
    // path.
    Run run{.programPath = QFile::encodeName(QCoreApplication::applicationFilePath())};
    // A signal ends the program for good, even while a restart is pending.
    const EndSignals endSignals;
    QObject::connect(&endSignals, &EndSignals::received, &*application, [&run] {
        run.startsAnew = false;
        QCoreApplication::quit();
    });
    SingleInstance instance(QDBusConnection::sessionBus(), SingleInstance::userLockDirectories());
    // Destroyed before the instance, so that the bus name is released only after the program has stopped.
    std::optional<CorvaneApp> program;
    QObject::connect(&instance, &SingleInstance::quitRequested, &*application, &QCoreApplication::quit);
    QObject::connect(&instance, &SingleInstance::activationRequested, &*application,
                     [&program](const QString &token) {
                         if (program) {
                             program->activate(token);
                         }
                     });
    QObject::connect(&instance, &SingleInstance::busLost, &*application, [&program] {
        if (program) {
            program->logger().log(u"session bus lost"_s);
        }
    });
    // Deferred to the event loop: exit() has no effect before the loop runs.
    QTimer::singleShot(0, &*application, [&] {
        spawn(launch(&instance, &program, startedBy, [&run] {
            run.startsAnew = true;
            QCoreApplication::quit();
        }));
    });
    run.status = QApplication::exec();
    program.reset();
    if (run.startsAnew) {
        instance.giveUp();
    }
    return run;
}

/// Replaces this process with a new run under the same process id, so that its parent sees no exit. Returns
/// only on failure.
int startAnew(const QByteArray &programPath, QByteArrayList arguments)
{
    const QByteArray login(CommandLine::loginOption);
    if (!arguments.contains(login)) {
        arguments.append(login);
    }
    std::vector<char *> pointers;
    for (QByteArray &argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    ::execv(programPath.constData(), pointers.data());
    say("Quillet could not restart.\n");
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    // Copied before QApplication removes its own options from argv.
    const QByteArrayList arguments(argv, argv + argc);
    const CommandLine commandLine = CommandLine::parse(arguments.sliced(std::min(argc, 1)));
    // Answered before the toolkit starts, which needs a display.
    switch (commandLine.request) {
    case CommandLine::Request::version:
        std::puts("Quillet " QUILLET_VERSION);
        return 0;
    case CommandLine::Request::help:
        std::fputs(CommandLine::help().toUtf8().constData(), stdout);
        return 0;
    case CommandLine::Request::invalid:
        say((commandLine.error + u'\n').toUtf8().constData());
        return wrongUse;
    case CommandLine::Request::run:
    case CommandLine::Request::login:
        break;
    }
    limitHeap();
    QCoreApplication::setApplicationName(u"Quillet"_s);
    QApplication::setDesktopFileName(names::application);
    const Run ended = run(argc, argv,
                          commandLine.request == CommandLine::Request::login ? CorvaneApp::StartedBy::login
                                                                             : CorvaneApp::StartedBy::user);
    return ended.startsAnew ? startAnew(ended.programPath, arguments) : ended.status;
}
