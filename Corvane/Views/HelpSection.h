// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// A part of a help article.
struct HelpSection {
    QString title;
    QStringList points; ///< each a line of the article

    friend bool operator==(const HelpSection &, const HelpSection &) = default;
};

} // namespace corvane
