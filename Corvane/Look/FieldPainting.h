// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionComboBox;
class QStyleOptionSpinBox;

/// How looks what is filled in or chosen: lines, pickers and editors with a stepper.
namespace corvane::look {

/// How tall a field with a text in this font is: as tall as a button.
[[nodiscard]] int fieldHeight(const QFontMetrics &metrics);

/// The ground of a field, and its edge.
void paintField(QPainter &painter, const QStyleOption &option, bool hasFocus);

[[nodiscard]] QSize pickerSize(const QStyleOptionComboBox &option, int textWidth);
void paintPicker(QPainter &painter, const QStyleOptionComboBox &option);
void paintPickerText(QPainter &painter, const QStyleOptionComboBox &option);

[[nodiscard]] QSize spinBoxSize(const QStyleOptionSpinBox &option, int textWidth);
[[nodiscard]] QRect spinBoxPart(const QStyleOptionSpinBox &option, QStyle::SubControl part);
void paintSpinBox(QPainter &painter, const QStyleOptionSpinBox &option);

} // namespace corvane::look
