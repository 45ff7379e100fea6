// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVariantAnimation>

class QWidget;

namespace corvane::look {

/// Turns the symbol of a button while what the button started goes on. Whole turns only, so that a short work
/// is seen as well, and the symbol never jumps back.
class SymbolTurn final : public QVariantAnimation {
    Q_OBJECT

public:
    /// The button's, which owns it.
    explicit SymbolTurn(QWidget &button);

    /// Each call is answered by one of `end()`.
    void begin();
    void end();

    /// How far the symbol of `button` is turned now, in degrees, clockwise.
    [[nodiscard]] static double degrees(const QWidget *button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOn();

    QWidget &m_button;
    int m_works = 0;
};

} // namespace corvane::look
