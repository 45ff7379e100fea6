// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DebugLogService.h"

#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

DebugLogService::DebugLogService(const QString &libraryDirectory, QObject *parent) : QObject(parent)
{
    const QString library = libraryDirectory.isEmpty() ? QDir::tempPath() : libraryDirectory;
    const QString folder = library + u"/Logs/Quillet"_s;
    m_logURL = QUrl::fromLocalFile(folder + u"/quillet-debug.log"_s);
    if (const auto made = makePrivateFolder(QFile::encodeName(folder)); !made) {
        // A folder of another user, possible in the temporary directory, would let that user read the log.
        m_isFolderUnusable = made.error().kind == FileError::Kind::unusable;
        report(made.error());
    }
}

QString DebugLogService::userLibraryDirectory()
{
    return userFolders::state();
}

void DebugLogService::log(const QString &message, Date date)
{
    const QString line = iso8601Text(date) + u' ' + message;
    m_latestLines.append(line);
    while (m_latestLines.size() > maximumVisibleLines) {
        m_latestLines.removeFirst();
    }
    if (!m_isFolderUnusable) {
        const auto appended =
            appendToRegularFile(QFile::encodeName(m_logURL.toLocalFile()), line.toUtf8() + '\n');
        if (!appended) {
            report(appended.error());
        }
    }
    Q_EMIT latestLinesChanged();
}

void DebugLogService::report(const FileError &error)
{
    if (error.kind == FileError::Kind::unusable && !std::exchange(m_isReported, true)) {
        std::fprintf(stderr, "quillet: the log %s cannot be written: %s\n",
                     qUtf8Printable(m_logURL.toLocalFile()), qUtf8Printable(error.reason));
    }
}

} // namespace corvane
