// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

class QPainter;
class QStyleOptionButton;
class QStyleOption;
class QWidget;

/// How buttons look: those that do something, and the segments of which one is chosen. Their kinds are the
/// roles of `button`.
namespace corvane::look {

[[nodiscard]] QSize pushButtonSize(const QStyleOptionButton &option, const QWidget *button);
void paintPushButton(QPainter &painter, const QStyleOptionButton &option, const QWidget *button);

[[nodiscard]] QSize segmentSize(const QStyleOptionButton &option);
void paintSegment(QPainter &painter, const QStyleOptionButton &option);

/// The ground of a button in a bar, which is seen only under the pointer.
void paintToolButtonGround(QPainter &painter, const QStyleOption &option);

} // namespace corvane::look
