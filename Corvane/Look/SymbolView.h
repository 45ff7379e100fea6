// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QWidget>

#include <optional>

namespace corvane::look {

/// A symbol in a view, hidden from screen readers, since a text is beside it.
class SymbolView final : public QWidget {
    Q_OBJECT

public:
    /// A symbol sized for text in `style`.
    SymbolView(const QString &name, TextStyle style, Ink ink, QWidget *parent = nullptr);

    /// A symbol of `size` points.
    SymbolView(const QString &name, int size, Ink ink, QWidget *parent = nullptr);

    void setSymbol(const QString &name);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_name;
    std::optional<TextStyle> m_style; ///< if its size follows a text style
    int m_size;
    Ink m_ink;
};

/// A symbol beside a text, centred on the text's first line.
[[nodiscard]] QLayout *label(SymbolView *symbol, QWidget *text, int spacing = space::small);

} // namespace corvane::look
