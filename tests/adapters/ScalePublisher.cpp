// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// Publishes the factor for windows that Xfce's settings publish: scale-publisher FACTOR. Ends with the
// X server.

#include "tests/adapters/PublishedSettings.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        return 2;
    }
    const corvane::SettingsPublisher publisher(corvane::PublishedSettings(QDataStream::LittleEndian)
                                                   .number("Gdk/WindowScalingFactor", std::atoi(argv[1]))
                                                   .bytes());
    std::puts("published");
    std::fflush(stdout);
    publisher.waitForTheServersEnd();
    return 0;
}
