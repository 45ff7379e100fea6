// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include <QCoreApplication>

// Plays the sound, ends as soon as it has the answer, and tells it: 0 for played.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    corvane::CanberraSounds sounds;
    return QCoro::waitFor(sounds.play(QStringLiteral("Glass"))) ? 0 : 1;
}
