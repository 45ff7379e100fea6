// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// An area through which a content taller than it is scrolled, by wheel, by its bar and, once Tab has reached
/// it, by the keyboard. It shows through to what it stands on. Where all is seen, Tab passes it by.
class ScrollView : public QScrollArea {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader.
    ScrollView(const QString &label, QWidget *content, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace corvane::look
