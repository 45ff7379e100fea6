// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QLabel>

namespace corvane::look {

/// A text of someone else's on one line, as plain text whatever it holds, in the desktop's font and palette.
/// Where it is too long for the line it ends in an ellipsis, and a tool tip shows the whole of it; assistive
/// tools read the whole of it too.
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
