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

/// Tells when the machine's time zone has become another one, by the file that decides it: a symbolic link
/// to the zone's rules, or a copy of them. The folder that it lies in is watched, since the file is replaced
/// by most. Main thread only.
class TimeZoneWatcher final : public QObject {
    Q_OBJECT

public:
    /// `zoneFile` is absolute. Nothing is told where the environment gives the program another zone.
    explicit TimeZoneWatcher(QString zoneFile, QObject *parent = nullptr);

    /// The file that decides the zone of a program with this environment: one that TZ names by its path, else
    /// the machine's.
    [[nodiscard]] static QString decidingFile();

    /// So long nothing may have happened to the file before it is looked at: it may be taken away first and
    /// made anew then.
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
