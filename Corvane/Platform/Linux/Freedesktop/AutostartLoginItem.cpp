// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/AutostartLoginItem.h"

#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// Below a configuration folder.
QString entryPath(const QString &folder)
{
    return QDir(folder).filePath(u"autostart/"_s + names::application + u".desktop"_s);
}

// No autostart entry is larger: a larger file is replaced.
constexpr qint64 maximumEntrySize = qint64{64} * 1024;

// Escapes a text as the value of a string key.
QByteArray stringValue(const QString &text)
{
    QByteArray value;
    for (const char c : text.toUtf8()) {
        switch (c) {
        case '\\':
            value += "\\\\";
            break;
        case '\n':
            value += "\\n";
            break;
        case '\r':
            value += "\\r";
            break;
        case '\t':
            value += "\\t";
            break;
        default:
            value += c;
        }
    }
    return value.startsWith(' ') ? "\\s" + value.mid(1) : value;
}

// A path as a command line: quoted, because it may contain any character, and with percent signs doubled,
// because single ones are field codes.
QString commandLine(const QString &path)
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
    word += u'"';
    // Some desktops look for the program before they undo the doubling, and would not find it.
    return path.contains(u'%') ? u"env "_s + word : word;
}

struct Entry {
    QByteArray key;
    QByteArray value;
};

QByteArray render(const std::vector<Entry> &entries, const QByteArray &foreign)
{
    QByteArray content = "[Desktop Entry]\n";
    for (const Entry &entry : entries) {
        content += entry.key + '=' + entry.value + '\n';
    }
    return content + foreign;
}

bool isKey(const QByteArray &text)
{
    if (text.isEmpty()) {
        return false;
    }
    for (const char c : text) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (!isPlain && QByteArrayView("-[]@_.").indexOf(c) < 0) {
            return false;
        }
    }
    return true;
}

// What others added to the entry, unchanged: comments, unknown keys, further groups. Lines that are invalid
// in a desktop entry are left out.
QByteArray foreignLines(const QByteArray &content, const std::vector<Entry> &own)
{
    // These could keep the desktop from starting the program, or change how it is started.
    const QByteArrayList decided{"Hidden", "DBusActivatable", "X-KDE-autostart-condition", "Path"};
    QByteArray foreign;
    enum class Group { before, entry, other } group = Group::before;
    for (const QByteArray &raw : content.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('[') && line.endsWith(']')) {
            group = line == "[Desktop Entry]" ? Group::entry : Group::other;
            if (group == Group::other) {
                foreign += '\n' + line + '\n';
            }
            continue;
        }
        if (group == Group::before || line.isEmpty()) {
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        const QByteArray key = equals > 0 ? line.left(equals).trimmed() : QByteArray();
        const bool isOwn =
            group == Group::entry &&
            (decided.contains(key) ||
             std::any_of(own.begin(), own.end(), [&](const Entry &entry) { return entry.key == key; }));
        if (line.startsWith('#') || (isKey(key) && !isOwn)) {
            foreign += line + '\n';
        }
    }
    return foreign;
}

QByteArray contentOf(const QString &path)
{
    return readRegularFile(QFile::encodeName(path), maximumEntrySize).value_or(QByteArray());
}

// The program that an entry is for (TryExec); empty if there is none.
QString enteredProgram(const QByteArray &content)
{
    constexpr QByteArrayView key = "TryExec=";
    for (const QByteArray &line : content.split('\n')) {
        if (line.startsWith(key)) {
            return QString::fromUtf8(line.sliced(key.size()).trimmed().replace("\\\\", "\\"));
        }
    }
    return {};
}

} // namespace

AutostartLoginItem::AutostartLoginItem(QString program, const QString &configHome,
                                       QStringList configDirectories, bool isTrial)
    : m_program(std::move(program))
    , m_path(entryPath(configHome))
    , m_isTrial(isTrial)
{
    for (const QString &directory : std::as_const(configDirectories)) {
        m_systemPaths.append(entryPath(directory));
    }
}

AutostartLoginItem AutostartLoginItem::forThisProgram()
{
    const bool isInBuildTree =
        QFile::exists(QCoreApplication::applicationDirPath() + u"/../CMakeCache.txt"_s);
    return {QCoreApplication::applicationFilePath(), userFolders::config(), userFolders::machineConfig(),
            isInBuildTree};
}

std::expected<void, Failure> AutostartLoginItem::registerItem()
{
    if (m_isTrial) {
        const QString other = enteredProgram(contentOf(m_path));
        if (other != m_program && QFileInfo(other).isExecutable()) {
            return {};
        }
    }
    const std::vector<Entry> entries{
        {"Type", "Application"},
        {"Name", "Quillet"},
        {"Comment", "Reminds an online teacher of the next lesson"},
        // Tells the program that the user did not start it.
        {"Exec", stringValue(commandLine(m_program) + u" --login"_s)},
        {"TryExec", stringValue(m_program)},
        {"Icon", names::application.data()},
        {"Terminal", "false"},
        {"X-GNOME-Autostart-enabled", "true"},
    };
    return write(render(entries, foreignLines(contentOf(m_path), entries)));
}

std::expected<void, Failure> AutostartLoginItem::unregisterItem()
{
    const bool isSystemWide = std::any_of(m_systemPaths.begin(), m_systemPaths.end(),
                                          [](const QString &path) { return QFileInfo::exists(path); });
    if (isSystemWide) {
        return write(render(
            {{"Type", "Application"}, {"Name", "Quillet"}, {"Exec", "false"}, {"Hidden", "true"}}, {}));
    }
    if (const auto removed = removeRegularFile(QFile::encodeName(m_path)); !removed) {
        return std::unexpected(
            Failure{u"the autostart entry %1 cannot be removed: %2"_s.arg(m_path, removed.error().reason)});
    }
    return {};
}

std::expected<void, Failure> AutostartLoginItem::write(const QByteArray &content) const
{
    if (contentOf(m_path) == content) {
        return {};
    }
    [[maybe_unused]] const auto made =
        makeFolder(QFile::encodeName(QFileInfo(m_path).path())); // if this fails, so does what follows
    if (const auto written = replaceRegularFile(QFile::encodeName(m_path), content); !written) {
        return std::unexpected(
            Failure{u"the autostart entry %1 cannot be written: %2"_s.arg(m_path, written.error().reason)});
    }
    return {};
}

} // namespace corvane
