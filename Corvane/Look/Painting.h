// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPalette>
#include <QRectF>

class QPainter;
class QStyleOption;

/// Helpers that the painters of controls share.
namespace corvane::look {

void fillRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color);

/// Strokes the edge of `area` with a line of `width`, inside it.
void strokeRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color,
                   double width = 1);

/// The palette of an enabled control, even if the control is disabled: ControlPainter fades a disabled
/// control, and the toolkit's disabled palette, faint already, would make it invisible.
[[nodiscard]] QPalette inkPalette(const QStyleOption &option);

/// The opacity of the text's colour on a control's background, by the state of the pointer.
[[nodiscard]] double groundOpacity(const QStyleOption &option, double atRest = 0);

/// Whether the control shows its keyboard focus: only while the user navigates by keyboard, not after a
/// click.
[[nodiscard]] bool showsFocus(const QStyleOption &option);

/// Saves the painter's state, makes it draw a disabled control faintly, and restores it at the end of the
/// scope.
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
