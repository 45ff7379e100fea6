// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/LoginEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// A path in an entry's string: the backslash is the one character of a path that needs care there, apart from
// those that would end the line.
QByteArray stringValue(const QString &text)
{
    QByteArray value = text.toUtf8();
    value.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r").replace('\t', "\\t");
    return value;
}

// A path as the first word of a command line: quoted, since it may hold anything, with its percent signs
// doubled, since single ones are field codes.
QString quotedWord(const QString &path)
{
    QString word = u"\""_s;
    for (const QChar c : path) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') {
            word += u'\\';
        }
        word += c;
        if (c == u'%') {
            word += u'%';
        }
    }
    return word + u'"';
}

} // namespace

LoginEntry::LoginEntry(QString program, const QString &configHome)
    : m_program(std::move(program))
    , m_path(configHome + u"/autostart/com.ordwinsoftware.Quillet.NotificationAgent.desktop"_s)
{
}

QString LoginEntry::userConfigHome()
{
    // A relative path in this variable is to be ignored.
    const QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(home) ? home : QDir::homePath() + u"/.config"_s;
}

std::expected<void, QString> LoginEntry::setPresent(bool isPresent)
{
    QFile present(m_path);
    if (!isPresent) {
        if (present.exists() && !present.remove()) {
            return std::unexpected(u"cannot be removed: "_s + present.errorString());
        }
        return {};
    }
    const QByteArray content = "[Desktop Entry]\n"
                               "Type=Application\n"
                               "Name=Quillet's notifications\n"
                               "Comment=Shows the reminders that Quillet left for later\n"
                               "Exec=" +
                               stringValue(quotedWord(m_program) + u" --login"_s) +
                               "\nTryExec=" + stringValue(m_program) +
                               "\nIcon=com.ordwinsoftware.Quillet\n"
                               "Terminal=false\n"
                               "NoDisplay=true\n"
                               "X-GNOME-Autostart-enabled=true\n";
    if (present.open(QIODevice::ReadOnly) && present.size() == content.size() &&
        present.readAll() == content) {
        return {};
    }
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
        return std::unexpected(u"cannot be written: "_s + file.errorString());
    }
    return {};
}

} // namespace corvane
