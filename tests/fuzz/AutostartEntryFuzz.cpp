// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/AutostartLoginItem.h"

#include "tests/fuzz/FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// An existing autostart entry with arbitrary content.
void run(const QByteArray &input)
{
    static const QTemporaryDir folder;
    AutostartLoginItem item(u"/opt/quillet"_s, folder.path(), {});
    QDir().mkpath(QFileInfo(item.path()).path());
    QFile file(item.path());
    fuzz::require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size(), "there is room");
    file.close();
    fuzz::require(item.registerItem().has_value(), "the entry can be written");
    const QByteArray content = contentOf(item.path());
    fuzz::require(content.startsWith("[Desktop Entry]\n"), "it begins as such entries do");
    const QByteArray entry = content.first(std::max<qsizetype>(content.indexOf("\n["), 0));
    const QByteArray own = content.contains("\n[") ? entry + '\n' : content;
    fuzz::require(own.count("\nExec=") == 1 && own.contains("\nExec=\"/opt/quillet\" --login\n"),
                  "it starts the program");
    fuzz::require(!own.contains("\nHidden="), "it is not hidden");
    fuzz::require(item.registerItem().has_value() && contentOf(item.path()) == content,
                  "registering again changes nothing");
    fuzz::require(item.unregisterItem().has_value() && !QFile::exists(item.path()), "it can be removed");
}

QUILLET_FUZZ_TARGET("AutostartEntry", run);

} // namespace
