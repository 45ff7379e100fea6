// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace corvane {

/// A card of the settings window: a title with a symbol, and content below.
class SettingsCard final : public QWidget {
    Q_OBJECT

public:
    SettingsCard(const QString &title, const QString &symbolName, QLayout *content,
                 QWidget *parent = nullptr);
};

} // namespace corvane
