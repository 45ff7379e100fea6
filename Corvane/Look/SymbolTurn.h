// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVariantAnimation>

class QWidget;

namespace corvane::look {

/// Turns the symbol of a button while the work it started is running. Only full turns, so that short work is
/// visible too and the symbol never jumps back.
class SymbolTurn final : public QVariantAnimation {
    Q_OBJECT

public:
    /// `button` owns it.
    explicit SymbolTurn(QWidget &button);

    /// Each begin() needs one end().
    void begin();
    void end();

    /// The current rotation of the symbol of `button`, in degrees, clockwise.
    [[nodiscard]] static double degrees(const QWidget *button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOn();

    QWidget &m_button;
    int m_works = 0;
};

} // namespace corvane::look
