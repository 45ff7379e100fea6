// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"
#include "Corvane/Services/DebugReport.h"

#include <QWidget>

namespace corvane {

/// One row of a list of the debug window: how it stands, what it is, and the texts about it, on as many lines
/// as they need. For a screen reader it is one element of a list. It paints itself, so that a list may have
/// hundreds.
class DebugRow final : public QWidget {
    Q_OBJECT

public:
    /// How the rows of one list divide their width, so that their texts stand in columns.
    struct Columns {
        int lead = 0;          ///< the width of the column of times or names; 0 where no row has one
        bool areBeside = true; ///< else the texts stand below what leads them

        friend bool operator==(const Columns &, const Columns &) = default;
    };

    /// `style` is that of the title.
    explicit DebugRow(look::TextStyle style, QWidget *parent = nullptr);

    [[nodiscard]] const debugReport::Row &row() const { return m_row; }
    void setRow(const debugReport::Row &row);

    /// Divides the width so from now on.
    void setColumns(Columns columns);

    /// The width of what leads the row; 0 if nothing does.
    [[nodiscard]] int leadWidth() const;

    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    /// The row has the keyboard.
    void focused();

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] QFont leadFont() const;
    [[nodiscard]] int symbolSize() const;
    [[nodiscard]] int textWidth(int width) const;
    void forgetMeasures();

    look::TextStyle m_style;
    debugReport::Row m_row;
    Columns m_columns;
    // Measured when they are asked for, and kept until a text or the font changes; -1 until then.
    mutable int m_leadWidth = -1;
    mutable int m_measuredWidth = -1;
    mutable int m_measuredHeight = 0;
};

} // namespace corvane
