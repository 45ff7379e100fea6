// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DebugLogService.h"

#include "Corvane/Utilities/DateText.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Appends `bytes` to an existing file or writes a new one in one step; errors are dropped, because a log
/// that cannot be written must not stop what it tells of.
void append(const QString &path, const QByteArray &bytes)
{
    if (QFile::exists(path)) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
            file.write(bytes);
        }
        return;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(bytes);
        file.commit();
    }
}

} // namespace

DebugLogService::DebugLogService(const QString &libraryDirectory, QObject *parent) : QObject(parent)
{
    const QString library = libraryDirectory.isEmpty() ? QDir::tempPath() : libraryDirectory;
    const QString folder = library + u"/Logs/Quillet"_s;
    QDir().mkpath(folder);
    m_logURL = QUrl::fromLocalFile(folder + u"/quillet-debug.log"_s);
}

QString DebugLogService::userLibraryDirectory()
{
    // A relative path in this variable is to be ignored, as for every base directory of the desktop.
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(state)) {
        return state;
    }
    const QString home = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    return home.isEmpty() ? QString() : home + u"/.local/state"_s;
}

void DebugLogService::log(const QString &message, Date date)
{
    const QString line = iso8601Text(date) + u' ' + message;
    m_latestLines.append(line);
    while (m_latestLines.size() > maximumVisibleLines) {
        m_latestLines.removeFirst();
    }
    append(m_logURL.toLocalFile(), line.toUtf8() + '\n');
    Q_EMIT latestLinesChanged();
}

} // namespace corvane
