// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionComboBox;
class QStyleOptionSpinBox;

/// Paints input fields: line edits, pickers and spin boxes.
namespace corvane::look {

/// The height of a field with text in this font: the same as a button's.
[[nodiscard]] int fieldHeight(const QFontMetrics &metrics);

/// Between a field's edge and its text, in points; the toolkit adds two more.
inline constexpr int fieldInset = 6;

/// The background and the edge of a field.
void paintField(QPainter &painter, const QStyleOption &option, bool hasFocus);

[[nodiscard]] QSize pickerSize(const QStyleOptionComboBox &option, int textWidth);
void paintPicker(QPainter &painter, const QStyleOptionComboBox &option);
void paintPickerText(QPainter &painter, const QStyleOptionComboBox &option);

[[nodiscard]] QSize spinBoxSize(const QStyleOptionSpinBox &option, int textWidth);
[[nodiscard]] QRect spinBoxPart(const QStyleOptionSpinBox &option, QStyle::SubControl part);
void paintSpinBox(QPainter &painter, const QStyleOptionSpinBox &option);

} // namespace corvane::look
