// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A fuzz target is a function of bytes that fails by ending the program. A fuzzer's program contains one
/// target; otherwise one program contains all targets and replays the corpus.
namespace corvane::fuzz {

using Run = void (*)(const QByteArray &input);

/// Registers a target with the program that replays the corpus.
class Entry {
public:
    Entry(std::string_view name, Run run);
};

/// Ends the program if `holds` is false. `what` names the condition, which must be true for any input.
void require(bool holds, const char *what);

} // namespace corvane::fuzz

#ifdef QUILLET_FUZZ
#define QUILLET_FUZZ_TARGET(name, run)                                                                       \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)                        \
    {                                                                                                        \
        run(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));                 \
        return 0;                                                                                            \
    }                                                                                                        \
    static_assert(true)
#else
#define QUILLET_FUZZ_TARGET(name, run) static const ::corvane::fuzz::Entry entry(name, run)
#endif
