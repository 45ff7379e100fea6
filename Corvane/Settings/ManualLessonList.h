// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/ManualLessonEntry.h"

#include <QWidget>

#include <cstddef>
#include <vector>

class QVBoxLayout;

namespace corvane {

class ManualLessonRow;

/// The lessons entered by hand, one row each, with a button to remove it.
class ManualLessonList final : public QWidget {
    Q_OBJECT

public:
    /// `before` precedes the first row's button in the tab order.
    explicit ManualLessonList(QWidget &before, QWidget *parent = nullptr);

    /// Shows `entries`. Rows of unchanged entries stay, with the keyboard focus; if the focused row is
    /// removed, its neighbour gets the focus.
    void setEntries(const std::vector<ManualLessonEntry> &entries);

    /// The row of entry `index`, which must exist.
    [[nodiscard]] QWidget *rowOf(std::size_t index) const;

Q_SIGNALS:
    /// The button of row `index` was pressed.
    void removeRequested(std::size_t index);

    /// The last row was removed while it had the focus.
    void focusLeft();

private:
    [[nodiscard]] ManualLessonRow *makeRow(const ManualLessonEntry &entry);

    QWidget &m_before;
    QVBoxLayout *m_column;
    std::vector<ManualLessonRow *> m_rows;
};

} // namespace corvane
