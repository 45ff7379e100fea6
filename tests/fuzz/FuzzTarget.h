// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A fuzz target is a function of bytes that fails by ending the program. Built for a fuzzer it is that
/// program's only one; otherwise one program holds them all and gives each its kept inputs.
namespace corvane::fuzz {

using Run = void (*)(const QByteArray &input);

/// Enters a target into the program that replays the kept inputs.
class Entry {
public:
    Entry(std::string_view name, Run run);
};

/// Ends the program where `holds` is false: what stays true whatever the input is.
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
