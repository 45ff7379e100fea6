// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>

namespace corvane {

/// A command in a list: a button as wide as the list, whose text wraps if it is too long.
class MenuCommandRow final : public QPushButton {
    Q_OBJECT

public:
    explicit MenuCommandRow(const QString &text, QWidget *parent = nullptr);

    /// Makes `keys` press the button, and shows them at its end.
    void setKeys(const QKeySequence &keys);

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
};

} // namespace corvane
