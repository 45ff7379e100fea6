// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <functional>

namespace corvane::look {

/// A rounded rectangle that other things stand on.
class Surface final : public QWidget {
    Q_OBJECT

public:
    /// What it is filled with under a palette, asked for at each painting.
    using Fill = std::function<QColor(const QPalette &)>;

    Surface(double cornerRadius, Fill fill, QLayout *content, QWidget *parent = nullptr);

    /// Another fill from now on.
    void setFill(Fill fill);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_cornerRadius;
    Fill m_fill;
};

/// A line of one point across what it stands in.
class Divider final : public QWidget {
    Q_OBJECT

public:
    explicit Divider(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Whether `widget` is to show that it has the keyboard: to someone who uses one, not to someone who clicks.
[[nodiscard]] bool showsFocus(const QWidget &widget);

/// The ring about what has the keyboard, just inside `area`. Called while painting a control.
void paintFocusRing(QPainter &painter, const QRectF &area, double cornerRadius, const QPalette &palette);

/// The same on a ground of the accent's colour, on which that ring would not be seen.
void paintFocusRingOnAccent(QPainter &painter, const QRectF &area, double cornerRadius,
                            const QPalette &palette);

} // namespace corvane::look
