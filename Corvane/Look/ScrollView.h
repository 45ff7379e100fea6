// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// Room for a content that may be larger than it: as wide as the room where that is wide enough, and scrolled
/// where it is not. While there is something to scroll, Tab reaches it and the keys scroll it.
class ScrollView : public QScrollArea {
    Q_OBJECT

public:
    /// `name` is what a screen reader calls it. Takes `content` over.
    ScrollView(const QString &name, QWidget *content, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void followRange();

    QWidget *m_ring;
};

} // namespace corvane::look
