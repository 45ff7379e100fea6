// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/fuzz/FuzzTarget.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <map>

/// Runs a target with each file of a folder as input: replay-fuzzed TARGET FOLDER.
namespace corvane::fuzz {

namespace {

// A function-local static, since entries in other files may be constructed before statics of this file.
std::map<std::string_view, Run> &entries()
{
    static std::map<std::string_view, Run> all;
    return all;
}

} // namespace

Entry::Entry(std::string_view name, Run run)
{
    entries().emplace(name, run);
}

} // namespace corvane::fuzz

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto &entries = corvane::fuzz::entries();
    const auto target = entries.find(argc == 3 ? argv[1] : "");
    if (target == entries.end()) {
        std::fprintf(stderr, "usage: %s TARGET FOLDER\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    const QFileInfoList inputs = folder.entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &input : inputs) {
        // Print the name first, since the input may crash the program.
        std::printf("%s\n", qUtf8Printable(input.fileName()));
        std::fflush(stdout);
        QFile file(input.filePath());
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "%s cannot be read\n", qUtf8Printable(input.filePath()));
            return 1;
        }
        target->second(file.readAll());
    }
    if (inputs.isEmpty()) {
        std::fprintf(stderr, "%s holds no inputs\n", argv[2]);
    }
    return inputs.isEmpty() ? 1 : 0;
}
