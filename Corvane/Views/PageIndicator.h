// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>
#include <QVariantAnimation>

namespace corvane {

/// A capsule per page, the current page's longer and in the accent colour. A screen reader reads it as "Page
/// 1 of 5".
class PageIndicator final : public QLabel {
    Q_OBJECT

public:
    explicit PageIndicator(int count, QWidget *parent = nullptr);

    /// `page` counts from 0. The change is animated while visible.
    void setPage(int page);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_count;
    int m_page = -1;
    QVariantAnimation m_place; ///< position of the long capsule, in pages
};

} // namespace corvane
