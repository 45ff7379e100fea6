// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/UserFolders.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace corvane::userFolders {

namespace {

QString folder(const char *variable, const QString &belowHome)
{
    const QString named = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(named) ? named : QDir::homePath() + belowHome;
}

QStringList folders(const char *variable, const QStringList &usual)
{
    QStringList found;
    const QStringList named = qEnvironmentVariable(variable).split(u':', Qt::SkipEmptyParts);
    for (const QString &path : named) {
        if (QDir::isAbsolutePath(path)) {
            found.append(path);
        }
    }
    return found.isEmpty() ? usual : found;
}

} // namespace

QString config()
{
    return folder("XDG_CONFIG_HOME", u"/.config"_s);
}

QString state()
{
    return folder("XDG_STATE_HOME", u"/.local/state"_s);
}

QString data()
{
    return folder("XDG_DATA_HOME", u"/.local/share"_s);
}

QStringList machineConfig()
{
    return folders("XDG_CONFIG_DIRS", {u"/etc/xdg"_s});
}

QStringList machineData()
{
    return folders("XDG_DATA_DIRS", {u"/usr/local/share"_s, u"/usr/share"_s});
}

} // namespace corvane::userFolders
