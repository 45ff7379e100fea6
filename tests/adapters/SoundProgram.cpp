// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include <QCoreApplication>
#include <QTimer>

// Without arguments: plays the sound, ends as soon as it has the answer, and tells it: 0 for played, 1 for
// not. With any: beeps, and ends with 2 as soon as the plain bell rings, or with 3 when it does not in five
// seconds.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    corvane::CanberraSounds sounds([] { QCoreApplication::exit(2); });
    if (argc == 1) {
        return QCoro::waitFor(sounds.play(QStringLiteral("Glass"))) ? 0 : 1;
    }
    sounds.beep();
    QTimer::singleShot(5000, [] { QCoreApplication::exit(3); });
    return QCoreApplication::exec();
}
