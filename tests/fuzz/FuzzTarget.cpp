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
// What waits, waits on this object's loop. It lives as long as the program, which the fuzzer ends.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    return 0;
}
#endif
