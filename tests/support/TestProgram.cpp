// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestProgram.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

namespace corvane {

namespace {

using Entries = std::map<std::string, TestEntry::Run>;

// A function-local static, since entries in other files may be constructed before statics of this file.
Entries &entries()
{
    static Entries all;
    return all;
}

/// Removes the first argument, keeping the program's name.
void dropFirst(int &argc, char **&argv)
{
    argv[1] = argv[0];
    ++argv;
    --argc;
}

} // namespace

TestEntry::TestEntry(const char *name, Run run)
{
    entries().emplace(name, run);
}

bool takeOption(const char *option, int &argc, char **&argv)
{
    if (argc < 2 || std::strcmp(argv[1], option) != 0) {
        return false;
    }
    dropFirst(argc, argv);
    return true;
}

} // namespace corvane

int main(int argc, char *argv[])
{
    const auto &entries = corvane::entries();
    const auto entry = entries.find(argc > 1 ? argv[1] : "");
    if (entry == entries.end()) {
        std::fprintf(stderr, "usage: %s CLASS [ARGUMENT...], where CLASS is one of\n", argv[0]);
        for (const auto &[name, run] : entries) {
            std::fprintf(stderr, "  %s\n", name.c_str());
        }
        return 2;
    }
    corvane::dropFirst(argc, argv);
    return entry->second(argc, argv);
}
