// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLayout>

#include <initializer_list>
#include <memory>
#include <vector>

namespace corvane::look {

/// Places widgets side by side, centred on their line, and wraps to further lines so that large text in a
/// small window is not cut off.
class FlowRow final : public QLayout {
public:
    enum class Ends {
        together, ///< packed at the start of the line
        apart,    ///< the last of each line at its end, unless it is alone on the line
        centred,  ///< each line centred
    };

    /// `spacing` points between widgets, `lineSpacing` between lines. The layout's parent widget takes
    /// ownership of `widgets`.
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
