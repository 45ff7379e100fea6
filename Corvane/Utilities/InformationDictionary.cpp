// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/InformationDictionary.h"

#include "Corvane/Utilities/Resources.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// The texts at the top level of the dictionary; empty if the list is not well-formed to its end.
QHash<QString, QString> texts(QXmlStreamReader &xml)
{
    QHash<QString, QString> found;
    if (!xml.readNextStartElement() || xml.name() != "plist"_L1 || !xml.readNextStartElement() ||
        xml.name() != "dict"_L1) {
        return {};
    }
    std::optional<QString> key;
    while (xml.readNextStartElement()) {
        if (xml.name() == "key"_L1) {
            key = xml.readElementText();
            continue;
        }
        if (key && xml.name() == "string"_L1) {
            found.insert(*key, xml.readElementText());
        } else {
            xml.skipCurrentElement(); // a number, a date, a list …
        }
        key.reset();
    }
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return xml.hasError() ? QHash<QString, QString>() : found;
}

} // namespace

InformationDictionary::InformationDictionary(QIODevice &device)
{
    QXmlStreamReader xml(&device);
    m_texts = texts(xml);
}

InformationDictionary InformationDictionary::main()
{
    const auto path = resources::find(resources::folders(), u"Info.plist"_s);
    QFile file(path.value_or(QString()));
    return path && file.open(QIODevice::ReadOnly) ? InformationDictionary(file) : InformationDictionary();
}

std::optional<QString> InformationDictionary::text(const QString &key) const
{
    const auto found = m_texts.constFind(key);
    return found != m_texts.constEnd() ? std::optional(*found) : std::nullopt;
}

} // namespace corvane
