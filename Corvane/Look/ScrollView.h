// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// Gives the vertical `bar` of another view the look of that of a ScrollView.
void makeSlim(QScrollBar &bar);

/// An area through which a content taller than it is scrolled, by wheel, by its bar and, once Tab has reached
/// it, by the keyboard. It shows through to what it stands on. Where all is seen, Tab passes it by.
class ScrollView : public QScrollArea {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader.
    ScrollView(const QString &label, QWidget *content, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *m_ring; ///< above the content, while the area has the keyboard
};

} // namespace corvane::look
