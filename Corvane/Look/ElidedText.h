// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QLabel>

namespace corvane::look {

/// Text from outside the program on one line, always shown as plain text, in the desktop's font and palette.
/// If it does not fit, it ends in an ellipsis and a tool tip shows all of it; assistive tools read all of it,
/// too.
class ElidedText final : public QLabel {
    Q_OBJECT

public:
    ElidedText(const QString &text, TextStyle style, Ink ink = Ink::primary, QWidget *parent = nullptr);

    void setLine(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void updateToolTip();

    TextStyle m_style;
    Ink m_ink;
};

} // namespace corvane::look
