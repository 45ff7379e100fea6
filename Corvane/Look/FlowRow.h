// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLayout>

#include <initializer_list>
#include <memory>
#include <vector>

namespace corvane::look {

/// Widgets beside one another, centred on their line, while there is room; else on further lines, so that
/// large texts in a small window are not cut.
class FlowRow final : public QLayout {
public:
    enum class Ends {
        together, ///< one after the other from the beginning of the line
        apart,    ///< the last one at the end of its line, unless it stands on a line alone
        centred,  ///< each line in the middle
    };

    /// `spacing` points between widgets, `lineSpacing` between lines; the layout's widget takes the widgets
    /// over.
    FlowRow(int spacing, int lineSpacing, Ends ends, std::initializer_list<QWidget *> widgets);
    ~FlowRow() override;

    void addItem(QLayoutItem *item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect &area) override;

private:
    [[nodiscard]] int arrange(const QRect &area, bool isMoving) const;

    int m_lineSpacing;
    Ends m_ends;
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace corvane::look
