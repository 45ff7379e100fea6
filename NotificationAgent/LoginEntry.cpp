// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/LoginEntry.h"

#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// Escapes a path for a string value of a desktop entry.
QByteArray stringValue(const QString &text)
{
    QByteArray value = text.toUtf8();
    value.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r").replace('\t', "\\t");
    return value;
}

// A path as the first word of a command line: quoted, because it may contain any character, with its percent
// signs doubled, because single ones are field codes.
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
    , m_path(configHome + u"/autostart/"_s + names::agent + u".desktop"_s)
{
}

QString LoginEntry::userConfigHome()
{
    return userFolders::config();
}

std::expected<void, QString> LoginEntry::setPresent(bool isPresent)
{
    const QByteArray path = QFile::encodeName(m_path);
    if (!isPresent) {
        if (const auto removed = removeRegularFile(path); !removed) {
            return std::unexpected(u"cannot be removed: "_s + removed.error().reason);
        }
        return {};
    }
    const QByteArray content = "[Desktop Entry]\n"
                               "Type=Application\n"
                               "Name=Quillet's notifications\n"
                               "Comment=Shows the reminders that Quillet left for later\n"
                               "Exec=" +
                               stringValue(quotedWord(m_program) + u" --login"_s) +
                               "\nTryExec=" + stringValue(m_program) + "\nIcon=" + names::application.data() +
                               "\nTerminal=false\n"
                               "NoDisplay=true\n"
                               "X-GNOME-Autostart-enabled=true\n";
    if (readRegularFile(path, content.size()) == content) {
        return {};
    }
    [[maybe_unused]] const auto made =
        makeFolder(QFile::encodeName(QFileInfo(m_path).path())); // a missing folder makes the write fail
    if (const auto written = replaceRegularFile(path, content); !written) {
        return std::unexpected(u"cannot be written: "_s + written.error().reason);
    }
    return {};
}

} // namespace corvane
