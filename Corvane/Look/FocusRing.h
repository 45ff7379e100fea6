// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;
class QPainter;
class QStyleOption;

namespace corvane::look {

/// The ring round the control with the keyboard focus: one per program, which moves from control to control.
class FocusRing final : public QObject {
    Q_OBJECT

public:
    /// Follows the keyboard focus from now on.
    explicit FocusRing(QObject *parent);
    ~FocusRing() override;

    /// How far the ring extends beyond `control`, in points.
    [[nodiscard]] static int reach(const QWidget *control);

    /// Draws the ring; `frame` is the widget that shows it.
    static void paint(QPainter &painter, const QStyleOption &option, const QFocusFrame &frame);

private:
    void follow(QWidget *focused);

    QPointer<QFocusFrame> m_frame; ///< destroyed with the window that last showed it
};

} // namespace corvane::look
