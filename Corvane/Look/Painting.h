// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPalette>
#include <QRectF>

class QPainter;
class QStyleOption;

/// What the painters of controls share.
namespace corvane::look {

void fillRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color);

/// A line of `width` just inside `area`.
void strokeRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color,
                   double width = 1);

/// The palette of a control that can be used, also for one that cannot: the toolkit's own of the latter is
/// faint already, and would be seen no more once it is drawn faintly.
[[nodiscard]] QPalette inkPalette(const QStyleOption &option);

/// How the ground of a control answers to the pointer: an opacity of the text's colour.
[[nodiscard]] double groundOpacity(const QStyleOption &option, double atRest = 0);

/// Whether the control is to show that it has the keyboard: to someone who uses one, not to someone who
/// clicks.
[[nodiscard]] bool showsFocus(const QStyleOption &option);

/// Draws faintly what cannot be used, and leaves the painter as it was.
class ControlPainter {
public:
    ControlPainter(QPainter &painter, const QStyleOption &option);
    ~ControlPainter();
    ControlPainter(const ControlPainter &) = delete;
    ControlPainter &operator=(const ControlPainter &) = delete;

private:
    QPainter &m_painter;
};

} // namespace corvane::look
