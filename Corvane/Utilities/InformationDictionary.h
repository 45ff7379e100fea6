// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QIODevice>
#include <QString>

#include <optional>

namespace corvane {

/// Information from the build: the texts of the property list "Info.plist", which is installed with the
/// program. Empty if the list is missing or malformed.
class InformationDictionary {
public:
    InformationDictionary() = default;

    /// Reads an XML property list from the open `device`.
    explicit InformationDictionary(QIODevice &device);

    /// The running program's dictionary. Reads the file; needs the application object.
    [[nodiscard]] static InformationDictionary main();

    /// The text for `key`; none if the key is missing or its value is not a text.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;

private:
    QHash<QString, QString> m_texts;
};

} // namespace corvane
