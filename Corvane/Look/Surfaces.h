// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <functional>

namespace corvane::look {

/// A rounded, filled rectangle behind its content.
class Surface final : public QWidget {
    Q_OBJECT

public:
    /// The fill colour under a palette, called at each painting.
    using Fill = std::function<QColor(const QPalette &)>;

    Surface(double cornerRadius, Fill fill, QLayout *content, QWidget *parent = nullptr);

    /// Replaces the fill and repaints.
    void setFill(Fill fill);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_cornerRadius;
    Fill m_fill;
};

/// A horizontal line of one point across its parent.
class Divider final : public QWidget {
    Q_OBJECT

public:
    explicit Divider(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Whether `widget` shows its keyboard focus: only while the user navigates by keyboard, not after a click.
[[nodiscard]] bool showsFocus(const QWidget &widget);

/// Paints the focus ring just inside `area`. Called while painting a control.
void paintFocusRing(QPainter &painter, const QRectF &area, double cornerRadius, const QPalette &palette);

/// The same on the accent colour, where the accent ring would be invisible.
void paintFocusRingOnAccent(QPainter &painter, const QRectF &area, double cornerRadius,
                            const QPalette &palette);

} // namespace corvane::look
