// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/fuzz/FuzzTarget.h"

#include <QCoreApplication>

#include <cstdlib>

namespace corvane::fuzz {

void require(bool holds, const char *what)
{
    if (!holds) {
        qFatal("it does not hold that %s", what);
    }
}

} // namespace corvane::fuzz

#ifdef QUILLET_FUZZ
// Asynchronous waits need this object's event loop. It lives until the fuzzer ends the program.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    return 0;
}
#endif
