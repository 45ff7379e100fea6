// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Resources.h"

#include "Corvane/Utilities/UserFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace corvane::resources {

QStringList folders(const QString &programFolder, const QStringList &dataFolders)
{
    const auto quilletBelow = [](const QString &folder) { return QDir::cleanPath(folder + u"/quillet"_s); };
    // Relative to the program, so that an installation can be moved as a whole.
    QStringList found{quilletBelow(programFolder + u'/' + QStringLiteral(QUILLET_DATA_FROM_PROGRAM))};
    for (const QString &folder : dataFolders) {
        found.push_back(quilletBelow(folder));
    }
    found.push_back(quilletBelow(programFolder + u"/../share"_s));
    found.removeDuplicates();
    return found;
}

QStringList folders()
{
    return folders(QCoreApplication::applicationDirPath(),
                   QStringList{userFolders::data()} + userFolders::machineData());
}

std::optional<QString> find(const QStringList &folders, const QString &name)
{
    for (const QString &folder : folders) {
        const QFileInfo file(folder + u'/' + name);
        if (file.isFile() && file.isReadable()) {
            return file.absoluteFilePath();
        }
    }
    return std::nullopt;
}

} // namespace corvane::resources
