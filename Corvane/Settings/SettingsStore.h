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

/// Named values in a file of the user's, which may edit it at any time. Main thread only.
///
/// Nothing waits for the file, and nothing of it is lost: what the program does not know, comments included,
/// stays as it is. What is no regular file is left alone; the values then hold for this run.
class SettingsStore {
public:
    /// Reads the file at `path`.
    explicit SettingsStore(QString path);

    /// The user's settings file.
    [[nodiscard]] static QString userPath();

    [[nodiscard]] bool contains(const QString &key) const;
    /// A text, data or a list of texts where it was read from the file; what was set where it was set.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &otherwise = {}) const;
    [[nodiscard]] QStringList allKeys() const;

    /// Keeps the value, for sync() to write.
    void setValue(const QString &key, const QVariant &value);

    /// Puts what was set since the last time that this succeeded into the file as it stands now. On failure
    /// the file is what it was.
    std::expected<void, FileError> sync();

    /// Why the file could not be read or written the last time; nothing where it could.
    [[nodiscard]] const std::optional<FileError> &error() const { return m_error; }

    /// Where a copy of the file is of which some was not understood, and so dropped by a write; an empty path
    /// where it could not be copied, and nothing where all was understood.
    [[nodiscard]] const std::optional<QString> &copyOfGarbled() const { return m_copyOfGarbled; }

    [[nodiscard]] const QString &fileName() const { return m_path; }

private:
    std::expected<void, FileError> read();
    std::expected<void, FileError> write();
    void keepAside();
    [[nodiscard]] std::vector<IniLine>::const_iterator find(const QString &key) const;

    QString m_path;
    QByteArray m_text; ///< what the file held when it was read last
    std::vector<IniLine> m_lines;
    QMap<QString, QVariant> m_values;  ///< what was set, as it was set
    QMap<QString, QVariant> m_changes; ///< what of it has not been written
    std::optional<FileError> m_error;
    std::optional<QString> m_copyOfGarbled;
};

} // namespace corvane
