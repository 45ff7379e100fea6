// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsStore.h"

#include "Corvane/Utilities/UserFolders.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

// A hundred times the size of a year of lessons entered by hand.
constexpr qint64 maximumSize = qint64{16} * 1024 * 1024;

bool isEntry(const IniLine &line)
{
    return line.isGeneral && line.kind == IniLine::Kind::entry;
}

IniLine entryOf(const QString &key, const QVariant &value)
{
    IniLine line{.kind = IniLine::Kind::entry,
                 .key = key.toUtf8(),
                 .value = encodedIniValue(value),
                 .isGeneral = true};
    line.text = line.key + '=' + line.value + '\n';
    return line;
}

// Replaces the key's last entry, or adds one at the end of its section.
void enter(std::vector<IniLine> &lines, const IniLine &entry)
{
    const auto isFormer = [&entry](const IniLine &line) { return isEntry(line) && line.key == entry.key; };
    if (const auto former = std::ranges::find_if(lines.rbegin(), lines.rend(), isFormer);
        former != lines.rend()) {
        *former = entry;
        return;
    }
    const auto inGeneral = [](const IniLine &line) {
        return isEntry(line) || (line.kind == IniLine::Kind::section && line.isGeneral);
    };
    auto place = std::ranges::find_if(lines.rbegin(), lines.rend(), inGeneral).base();
    if (place == lines.begin()) {
        lines.push_back({.kind = IniLine::Kind::section, .text = "[General]\n", .isGeneral = true});
        place = lines.end();
    }
    lines.insert(place, entry);
}

QByteArray textOf(const std::vector<IniLine> &lines)
{
    QByteArray text;
    bool isOnNewLine = true;
    for (const IniLine &line : lines) {
        // A comment may follow a value on its line.
        if (!isOnNewLine && !line.text.startsWith(';')) {
            // An escaped carriage return and a line feed would be one escaped line break.
            text += text.endsWith('\r') ? '\r' : '\n';
        }
        text += line.text;
        isOnNewLine = line.isEnded;
    }
    return text;
}

} // namespace

SettingsStore::SettingsStore(QString path) : m_path(std::move(path))
{
    if (const auto done = read(); !done) {
        m_error = done.error();
    }
}

QString SettingsStore::userPath()
{
    return userFolders::config() + u"/quillet/quillet.ini"_s;
}

bool SettingsStore::contains(const QString &key) const
{
    return m_values.contains(key) || find(key) != m_lines.end();
}

QVariant SettingsStore::value(const QString &key, const QVariant &otherwise) const
{
    if (const auto set = m_values.find(key); set != m_values.end()) {
        return *set;
    }
    const auto line = find(key);
    return line != m_lines.end() ? decodedIniValue(line->value) : otherwise;
}

QStringList SettingsStore::allKeys() const
{
    QStringList keys = m_values.keys();
    for (const IniLine &line : m_lines) {
        if (isEntry(line)) {
            keys.append(QString::fromUtf8(line.key));
        }
    }
    keys.sort();
    keys.removeDuplicates();
    return keys;
}

void SettingsStore::setValue(const QString &key, const QVariant &value)
{
    m_values[key] = value;
    m_changes[key] = value;
}

std::expected<void, FileError> SettingsStore::sync()
{
    auto done = read();
    if (done && !m_changes.isEmpty()) {
        done = write();
    }
    m_error = done ? std::nullopt : std::optional(done.error());
    return done;
}

std::expected<void, FileError> SettingsStore::read()
{
    const auto bytes = readRegularFile(QFile::encodeName(m_path), maximumSize);
    if (!bytes && bytes.error().kind != FileError::Kind::absent) {
        return std::unexpected(bytes.error());
    }
    m_text = bytes.value_or(QByteArray());
    m_lines = iniLines(m_text);
    return {};
}

std::expected<void, FileError> SettingsStore::write()
{
    std::vector<IniLine> lines = m_lines;
    const auto isGarbage = [](const IniLine &line) { return line.kind == IniLine::Kind::garbage; };
    const bool isGarbled = std::erase_if(lines, isGarbage) > 0;
    for (auto change = m_changes.cbegin(); change != m_changes.cend(); ++change) {
        enter(lines, entryOf(change.key(), change.value()));
    }
    const QByteArray text = textOf(lines);
    const QFileInfo file(m_path);
    if (file.exists() && !file.isWritable()) {
        return std::unexpected(FileError{FileError::Kind::failed, u"it is read-only"_s});
    }
    if (auto made = makePrivateFolder(QFile::encodeName(file.path())); !made) {
        return made;
    }
    if (isGarbled) {
        keepAside();
    }
    if (text == m_text) {
        makeFilePrivate(QFile::encodeName(m_path));
    } else if (auto written = replaceRegularFile(QFile::encodeName(m_path), text); !written) {
        return written;
    }
    m_text = text;
    m_lines = std::move(lines);
    m_changes.clear();
    return {};
}

void SettingsStore::keepAside()
{
    // Never overwrites an earlier copy, which may be the one that matters.
    QString copy = m_path + u".unreadable"_s;
    for (int number = 2; QFileInfo::exists(copy) || QFileInfo(copy).isSymLink(); ++number) {
        copy = m_path + u".unreadable-"_s + QString::number(number);
    }
    m_copyOfGarbled = replaceRegularFile(QFile::encodeName(copy), m_text) ? copy : QString();
}

std::vector<IniLine>::const_iterator SettingsStore::find(const QString &key) const
{
    const QByteArray name = key.toUtf8();
    const auto isMeant = [&name](const IniLine &line) { return isEntry(line) && line.key == name; };
    // The last entry wins.
    const auto last = std::ranges::find_if(m_lines.rbegin(), m_lines.rend(), isMeant);
    return last == m_lines.rend() ? m_lines.end() : std::prev(last.base());
}

} // namespace corvane
