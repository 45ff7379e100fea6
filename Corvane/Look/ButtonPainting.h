// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

class QPainter;
class QStyleOptionButton;
class QStyleOption;
class QWidget;

/// Paints buttons: push buttons, whose kind is the `Role` of `button`, and the segments of a segmented
/// control.
namespace corvane::look {

[[nodiscard]] QSize pushButtonSize(const QStyleOptionButton &option, const QWidget *button);
void paintPushButton(QPainter &painter, const QStyleOptionButton &option, const QWidget *button);

[[nodiscard]] QSize segmentSize(const QStyleOptionButton &option);
void paintSegment(QPainter &painter, const QStyleOptionButton &option);

/// The background of a tool button, visible only under the pointer.
void paintToolButtonGround(QPainter &painter, const QStyleOption &option);

} // namespace corvane::look
