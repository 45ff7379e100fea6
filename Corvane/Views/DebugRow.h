// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"
#include "Corvane/Services/DebugReport.h"

#include <QWidget>

namespace corvane {

/// A row of a list in the debug window: a status symbol or a time or name, a title and texts, wrapped as
/// needed. For a screen reader it is one list item. It paints its texts itself, so that a list can have
/// hundreds of rows.
class DebugRow final : public QWidget {
    Q_OBJECT

public:
    /// The columns that the rows of a list share.
    struct Columns {
        int lead = 0;          ///< width of the column of times, names or symbols; 0 if no row has one
        bool areBeside = true; ///< otherwise the texts are below the lead

        friend bool operator==(const Columns &, const Columns &) = default;
    };

    /// `style` is the title's.
    explicit DebugRow(look::TextStyle style, QWidget *parent = nullptr);

    [[nodiscard]] const debugReport::Row &row() const { return m_row; }
    void setRow(const debugReport::Row &row);

    void setColumns(Columns columns);

    /// The width of the lead (status symbol, time or name); 0 without one.
    [[nodiscard]] int leadWidth() const;

    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    /// The row got the keyboard focus.
    void focused();

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] QFont leadFont() const;
    [[nodiscard]] int textWidth(int width) const;
    void forgetMeasures();

    look::TextStyle m_style;
    debugReport::Row m_row;
    Columns m_columns;
    // Measured on demand, cached until a text or the font changes; -1 while unknown.
    mutable int m_leadWidth = -1;
    mutable int m_measuredWidth = -1;
    mutable int m_measuredHeight = 0;
};

} // namespace corvane
