// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

namespace corvane::look {

/// Plain text on one line. Text that does not fit is drawn smaller, down to a share of the font's size, and
/// then cut with an ellipsis; assistive tools read all of it.
class LineLabel final : public QLabel {
    Q_OBJECT

public:
    /// `shrinksTo` is the smallest share of the size of `font`, 0 to 1.
    LineLabel(const QFont &font, const QColor &color, double shrinksTo, QWidget *parent = nullptr);

    /// Shows `text`, converted to a single line.
    void setLine(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    QColor m_color;
    int m_largestSize;
    int m_smallestSize;
    QString m_line;
    QString m_shown; ///< m_line, or its beginning and an ellipsis
    QFont m_fitted;
    bool m_hasWidth = false; ///< whether the layout has given it its width
};

} // namespace corvane::look
