// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/TimeZoneWatcher.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Identifies the zone of this file: its name or, for a copy, a digest of the rules; empty if there is no
/// file.
QByteArray zoneOf(const QString &zoneFile)
{
    const auto folder = "/zoneinfo/"_L1;
    const QString target = QFileInfo(zoneFile).symLinkTarget();
    if (const qsizetype start = target.indexOf(folder); start >= 0) {
        return target.sliced(start + folder.size()).toUtf8();
    }
    // A folder or a device is not a zone, and reading it may never end.
    QFile file(zoneFile);
    if (!QFileInfo(zoneFile).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    constexpr qint64 longestRules = qint64{1024} * 1024;
    return QCryptographicHash::hash(file.read(longestRules), QCryptographicHash::Sha256).toHex();
}

/// The zone in the environment: a name, or the path of a file.
QString zoneOfEnvironment()
{
    const QString zone = qEnvironmentVariable("TZ");
    return zone.startsWith(u':') ? zone.sliced(1) : zone;
}

/// Whether the environment leaves the zone to `zoneFile`.
bool isDecidedBy(const QString &zoneFile)
{
    return qEnvironmentVariableIsEmpty("TZ") ? !qEnvironmentVariableIsSet("TZ")
                                             : zoneOfEnvironment() == zoneFile;
}

} // namespace

TimeZoneWatcher::TimeZoneWatcher(QString zoneFile, QObject *parent)
    : QObject(parent)
    , m_zoneFile(std::move(zoneFile))
{
    if (!isDecidedBy(m_zoneFile)) {
        return;
    }
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &TimeZoneWatcher::look);
    const auto wait = [this] { m_settling.start(); };
    connect(&m_files, &QFileSystemWatcher::directoryChanged, this, wait);
    connect(&m_files, &QFileSystemWatcher::fileChanged, this, wait);
    m_files.addPath(QFileInfo(m_zoneFile).path());
    watchCopy();
    m_zone = zoneOf(m_zoneFile);
}

QString TimeZoneWatcher::decidingFile()
{
    const QString zone = zoneOfEnvironment();
    return zone.startsWith(u'/') ? zone : u"/etc/localtime"_s;
}

void TimeZoneWatcher::look()
{
    watchCopy();
    QByteArray zone = zoneOf(m_zoneFile);
    if (std::exchange(m_zone, zone) != zone) {
        Q_EMIT zoneChanged();
    }
}

void TimeZoneWatcher::watchCopy()
{
    // The folder does not report that a copy is overwritten. A link is not watched, because that would follow
    // it, and its target also changes when the rules of the same zone are updated.
    const QFileInfo file(m_zoneFile);
    if (file.isFile() && !file.isSymLink() && !m_files.files().contains(m_zoneFile)) {
        m_files.addPath(m_zoneFile);
    }
}

} // namespace corvane
