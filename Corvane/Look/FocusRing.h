// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;
class QPainter;
class QStyleOption;

namespace corvane::look {

/// The ring about the control that has the keyboard: one for the program, which goes from control to control.
class FocusRing final : public QObject {
    Q_OBJECT

public:
    /// Follows the keyboard from now on.
    explicit FocusRing(QObject *parent);
    ~FocusRing() override;

    /// How far the ring of a control reaches beyond it.
    [[nodiscard]] static int reach(const QWidget *control);

    /// Draws the ring; `frame` is the widget that shows it.
    static void paint(QPainter &painter, const QStyleOption &option, const QFocusFrame &frame);

private:
    void follow(QWidget *focused);

    QPointer<QFocusFrame> m_frame; ///< goes with the window that it was shown in last
};

} // namespace corvane::look
