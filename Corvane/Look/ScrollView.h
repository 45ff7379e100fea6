// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// A transparent area that scrolls a taller `content` by wheel, by its scroll bar and, once Tab has reached
/// it, by keyboard. Tab skips it if nothing needs scrolling.
class ScrollView : public QScrollArea {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader.
    ScrollView(const QString &label, QWidget *content, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace corvane::look
