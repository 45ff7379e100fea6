// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace corvane {

/// Reports that the machine's time zone has changed, by the file that determines it: a symbolic link to the
/// zone's rules, or a copy of them. Watches the file's folder, because most tools replace the file. Main
/// thread only.
class TimeZoneWatcher final : public QObject {
    Q_OBJECT

public:
    /// `zoneFile` is absolute. Reports nothing if the environment gives the program another zone.
    explicit TimeZoneWatcher(QString zoneFile, QObject *parent = nullptr);

    /// The file that determines the zone of a program with this environment: the one whose path is in TZ,
    /// otherwise the machine's.
    [[nodiscard]] static QString decidingFile();

    /// How long the file must stay unchanged before it is read: it may first be removed and then created
    /// again.
    static constexpr std::chrono::milliseconds settlingTime{200};

Q_SIGNALS:
    void zoneChanged();

private:
    void look();
    void watchCopy();

    QString m_zoneFile;
    QFileSystemWatcher m_files;
    QTimer m_settling;
    QByteArray m_zone;
};

} // namespace corvane
