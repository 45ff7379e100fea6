// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QIODevice>
#include <QString>

#include <optional>

namespace corvane {

/// What the program was told about itself when it was built: the texts of the property list "Info.plist",
/// which is installed with it. A list that is missing or garbled holds nothing.
class InformationDictionary {
public:
    InformationDictionary() = default;

    /// The dictionary that the open `device` holds as a property list in XML.
    explicit InformationDictionary(QIODevice &device);

    /// The running program's. Reads the file; needs the application object.
    [[nodiscard]] static InformationDictionary main();

    /// The text under `key`; none where there is no such key, and where its value is not a text.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;

private:
    QHash<QString, QString> m_texts;
};

} // namespace corvane
