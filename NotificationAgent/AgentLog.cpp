// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLog.h"

#include "Corvane/Utilities/PlainText.h"
#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

AgentLog::AgentLog(QString path) : m_path(std::move(path))
{
    if (m_path.isEmpty()) {
        return;
    }
    if (const auto made = makePrivateFolder(QFile::encodeName(QFileInfo(m_path).path()));
        !made && made.error().kind == FileError::Kind::unusable) {
        // Another user's folder, for example: that user could read the log.
        m_path.clear();
        log(u"log folder cannot be used: "_s + made.error().reason);
    }
}

QString AgentLog::userPath()
{
    return userFolders::state() + u"/Logs/Quillet/quillet-notification-agent.log"_s;
}

void AgentLog::log(const QString &message) const
{
    const QByteArray line = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toUtf8() + ' ' +
                            plainText(message).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    if (m_path.isEmpty()) {
        return;
    }
    const QFileInfo file(m_path);
    if (file.isFile() && file.size() + line.size() > maximumFileSize) {
        const QString aside = m_path + u".old"_s;
        QFile::remove(aside);
        QFile::rename(m_path, aside);
    }
    const auto appended = appendToRegularFile(QFile::encodeName(m_path), line);
    if (!appended && appended.error().kind == FileError::Kind::unusable &&
        !std::exchange(m_isReported, true)) {
        std::fprintf(stderr, "%s cannot be written: %s\n", qUtf8Printable(m_path),
                     qUtf8Printable(appended.error().reason));
    }
}

QString quotedForLog(const QString &text)
{
    constexpr qsizetype longest = 120;
    return u'"' + (text.size() > longest ? text.left(longest) + u"…"_s : text) + u'"';
}

} // namespace corvane
