// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/IniText.h"
#include "Corvane/Utilities/RegularFile.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <vector>

namespace corvane {

/// Named values in a file that the user may edit at any time. Main thread only.
///
/// No call waits for another program. Content that the program does not know, comments included, is
/// preserved; lines that cannot be parsed are dropped by a write, which copies the file first. Anything but a
/// regular file is left alone; the values then last for this run.
class SettingsStore {
public:
    /// Reads the file at `path`.
    explicit SettingsStore(QString path);

    /// The user's settings file.
    [[nodiscard]] static QString userPath();

    [[nodiscard]] bool contains(const QString &key) const;
    /// A value from the file is a text, data or a list of texts; a value that was set keeps its type.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &otherwise = {}) const;
    [[nodiscard]] QStringList allKeys() const;

    /// Keeps the value until sync() writes it.
    void setValue(const QString &key, const QVariant &value);

    /// Merges the values set since the last successful call into the current file. On failure the file is
    /// unchanged.
    std::expected<void, FileError> sync();

    /// The error of the last read or write, if it failed.
    [[nodiscard]] const std::optional<FileError> &error() const { return m_error; }

    /// The path of a copy of the file, made because a write dropped lines that could not be parsed; empty if
    /// the copy failed, nothing if all lines were parsed.
    [[nodiscard]] const std::optional<QString> &copyOfGarbled() const { return m_copyOfGarbled; }

    [[nodiscard]] const QString &fileName() const { return m_path; }

private:
    std::expected<void, FileError> read();
    std::expected<void, FileError> write();
    void keepAside();
    [[nodiscard]] std::vector<IniLine>::const_iterator find(const QString &key) const;

    QString m_path;
    QByteArray m_text; ///< the file's contents when last read
    std::vector<IniLine> m_lines;
    QMap<QString, QVariant> m_values;  ///< the values that were set, with their types
    QMap<QString, QVariant> m_changes; ///< those not yet written
    std::optional<FileError> m_error;
    std::optional<QString> m_copyOfGarbled;
};

} // namespace corvane
