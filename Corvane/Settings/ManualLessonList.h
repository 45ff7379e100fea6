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

/// The lessons entered by hand, one row each, with a button that removes it.
class ManualLessonList final : public QWidget {
    Q_OBJECT

public:
    /// `before` is the control that Tab leaves for the first row's button.
    explicit ManualLessonList(QWidget &before, QWidget *parent = nullptr);

    /// Shows `entries`. Rows of entries that stay are kept, with the keyboard where it is; where the row that
    /// has the keyboard goes, its neighbour gets it.
    void setEntries(const std::vector<ManualLessonEntry> &entries);

    /// The row of the entry `index`, which must exist.
    [[nodiscard]] QWidget *rowOf(std::size_t index) const;

Q_SIGNALS:
    /// The button of the row `index` was pressed.
    void removeRequested(std::size_t index);

    /// The last row went, and it had the keyboard.
    void focusLeft();

private:
    [[nodiscard]] ManualLessonRow *makeRow(const ManualLessonEntry &entry);

    QWidget &m_before;
    QVBoxLayout *m_column;
    std::vector<ManualLessonRow *> m_rows;
};

} // namespace corvane
