// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/EndSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>

#include <array>
#include <cerrno>

namespace corvane {

namespace {

constexpr std::array numbers{SIGTERM, SIGINT, SIGHUP};

/// A signal handler may do very little, so it writes into this pipe; the event loop reads the other end.
std::array<int, 2> pipeEnds{-1, -1};

void tellLoop(int)
{
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
    errno = error;
}

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // The signals then end the program by default.
    }
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT received();
    });
    struct sigaction action = {};
    action.sa_handler = &tellLoop;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : numbers) {
        struct sigaction former = {};
        // An ignored signal stays ignored: nohup, for example, lets the program outlive its terminal.
        if (::sigaction(number, nullptr, &former) == 0 && former.sa_handler != SIG_IGN) {
            ::sigaction(number, &action, nullptr);
        }
    }
}

} // namespace corvane
