// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/SettingsFile.h"

#include "Corvane/Utilities/Clock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Removes copies of the settings that earlier versions left behind when they were killed: the file's name
/// plus six random letters. A suffix without both cases is the user's own file.
void removeLeftOvers(const QFileInfo &settings)
{
    static const QRegularExpression leftOver(u"\\.(?=[a-z]*[A-Z])(?=[A-Z]*[a-z])[A-Za-z]{6}$"_s);
    for (const QFileInfo &file :
         settings.dir().entryInfoList({settings.fileName() + u".??????"_s}, QDir::Files)) {
        if (leftOver.match(file.fileName()).hasMatch() && !file.isSymLink()) {
            QFile::remove(file.filePath());
        }
    }
}

} // namespace

std::unique_ptr<SettingsStore> SettingsFile::open()
{
    auto settings = std::make_unique<SettingsStore>(SettingsStore::userPath());
    removeLeftOvers(QFileInfo(settings->fileName()));
    return settings;
}

void SettingsFile::report(const SettingsStore &settings, DebugLogService &logger) const
{
    if (settings.copyOfGarbled()) {
        logger.log(u"settings file not understood path=\""_s + settings.fileName() + u"\" copy=\""_s +
                   *settings.copyOfGarbled() + u'"');
    }
    if (settings.error()) {
        logger.log(u"settings file cannot be written path=\""_s + settings.fileName() + u"\" reason=\""_s +
                   settings.error()->reason + u"\", changes last for this run only"_s);
    }
}

} // namespace corvane
