// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

AgentLog::AgentLog(QString path) : m_path(std::move(path))
{
    if (!m_path.isEmpty()) {
        QDir().mkpath(QFileInfo(m_path).path());
    }
}

QString AgentLog::userPath()
{
    // A relative path in this variable is to be ignored.
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString folder = QDir::isAbsolutePath(state) ? state : QDir::homePath() + u"/.local/state"_s;
    return folder + u"/Logs/Quillet/quillet-notification-agent.log"_s;
}

void AgentLog::log(const QString &message) const
{
    QString text = message;
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control) {
            c = u' ';
        }
    }
    const QByteArray line =
        QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toUtf8() + ' ' + text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    if (m_path.isEmpty()) {
        return;
    }
    if (QFileInfo(m_path).size() + line.size() > maximumFileSize) {
        const QString aside = m_path + u".old"_s;
        QFile::remove(aside);
        QFile::rename(m_path, aside);
    }
    QFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        file.write(line);
    }
}

QString quotedForLog(const QString &text)
{
    constexpr qsizetype longest = 120;
    return u'"' + (text.size() > longest ? text.left(longest) + u"…"_s : text) + u'"';
}

} // namespace corvane
