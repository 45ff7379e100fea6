// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"
#include "Corvane/Services/DebugReport.h"

#include <QWidget>

#include <vector>

namespace corvane {

class DebugRow;

/// A list of rows in the debug window, without scrolling. Tab reaches one row; the arrow keys, Home and End
/// move between rows. Unchanged rows are not redrawn.
class DebugRowList final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader, `style` the style of the rows' titles.
    DebugRowList(const QString &label, look::TextStyle style, QWidget *parent = nullptr);

    void setRows(const std::vector<debugReport::Row> &rows);

    /// The rows, from top to bottom.
    [[nodiscard]] const std::vector<DebugRow *> &rows() const { return m_rows; }

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// `row` got the keyboard focus; the view should scroll to it.
    void rowFocused(QWidget *row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void dropLeadingRows(const std::vector<debugReport::Row> &rows);
    DebugRow *makeRow();
    void setCurrent(std::size_t index);
    void divide(int width) const;
    void arrange();

    look::TextStyle m_style;
    std::vector<DebugRow *> m_rows;
    std::size_t m_current = 0; ///< the row that Tab reaches
};

} // namespace corvane
