// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/AppSettings.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/support/FakeLoginItem.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// The settings file: read and rewritten as at program start, then changed and read again.
void run(const QByteArray &input)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"settings.ini"_s);
    QFile::remove(path + u".unreadable"_s);
    QFile file(path);
    fuzz::require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size(), "there is room");
    file.close();

    SettingsStore store(path);
    FakeLoginItem loginItem;
    AppSettings settings(store, store, loginItem);
    settings.setPlaysSound(!settings.playsSound());
    fuzz::require(!store.error(), "the file can be written");

    SettingsStore again(path);
    const AppSettings reread(again, again, loginItem);
    fuzz::require(reread.playsSound() == settings.playsSound(), "a change is kept");
    fuzz::require(reread.startAtLogin() == settings.startAtLogin(), "the login item is kept");
    fuzz::require(reread.hasCompletedWelcome() == settings.hasCompletedWelcome(), "the setup is kept");
    fuzz::require(reread.notificationPosition() == settings.notificationPosition(), "the position is kept");
    fuzz::require(reread.manualLessons() == settings.manualLessons(), "the lessons are kept");
    fuzz::require(!again.copyOfGarbled(), "what was written is understood");
    const std::vector<IniLine> before = iniLines(input);
    const bool wasGarbled =
        std::ranges::any_of(before, [](const IniLine &line) { return line.kind == IniLine::Kind::garbage; });
    fuzz::require(store.copyOfGarbled().has_value() == wasGarbled, "what is not understood is kept aside");
}

QUILLET_FUZZ_TARGET("SettingsFile", run);

} // namespace
