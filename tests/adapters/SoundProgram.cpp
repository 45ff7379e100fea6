// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include <dlfcn.h>
#include <pthread.h>

#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <cerrno>

namespace {

std::atomic<bool> threadsAreDenied = false;

} // namespace

// Overrides the system's function, so that creating a thread fails once `threadsAreDenied` is set.
extern "C" int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*start)(void *),
                              void *argument) noexcept
{
    using Create = int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);
    static const auto create = reinterpret_cast<Create>(::dlsym(RTLD_NEXT, "pthread_create"));
    return threadsAreDenied ? EAGAIN : create(thread, attributes, start, argument);
}

// Usage: sound-program SECONDS [beep [without-threads]]. Plays the sound with a time limit of SECONDS and
// exits as soon as it has the answer: with 0 if the sound plays, 1 if not. With "beep", it beeps instead and
// exits with 2 as soon as the plain bell rings, or with 3 after 20 s.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const corvane::Seconds limit{arguments.value(1).toDouble()};
    corvane::CanberraSounds sounds([] { QCoreApplication::exit(2); }, limit);
    if (argc == 2) {
        return QCoro::waitFor(sounds.play(QStringLiteral("Glass"))) ? 0 : 1;
    }
    threadsAreDenied = arguments.contains(QStringLiteral("without-threads"));
    sounds.beep();
    QTimer::singleShot(20000, [] { QCoreApplication::exit(3); });
    return QCoreApplication::exec();
}
