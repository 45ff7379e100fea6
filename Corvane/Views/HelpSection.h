// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// A section of a help article.
struct HelpSection {
    QString title;
    QStringList points; ///< each is a paragraph of the article

    friend bool operator==(const HelpSection &, const HelpSection &) = default;
};

} // namespace corvane
