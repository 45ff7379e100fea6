// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QWidget>

namespace corvane {

/// A status line in a card: a symbol, a bold title and an explanation.
class SettingsRow final : public QWidget {
    Q_OBJECT

public:
    /// `tint` is the symbol's colour.
    SettingsRow(const QString &title, const QString &detail, const QString &symbolName, look::Ink tint,
                QWidget *parent = nullptr);
};

} // namespace corvane
